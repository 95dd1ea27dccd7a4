#pragma once

class QWidget;

namespace tidewell {

/// Gives `window`, which has no frame and was not shown yet, a background in its palette's window
/// colour with round corners of that radius in points and a hairline around it. The background is
/// painted before the window's own paint event. Without a compositor the corners are cut off by a
/// mask. Main thread.
void useRoundedBackground(QWidget& window, double radius);

} // namespace tidewell
