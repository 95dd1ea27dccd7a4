#pragma once

#include <QWidget>

class QPainter;

namespace tidewell {

/// The ground of a window without a frame of its own: the window colour with soft corners and a
/// hairline around it. Where no compositor shows windows' transparent parts, the corners are cut
/// off. Main thread.
class SoftCorners final {
public:
    /// For `window`, before it is first shown, with corners of that radius in points. A member of
    /// the window.
    SoftCorners(QWidget& window, double radius);

    /// To be called for the window's resize events.
    void resized();

    /// Paints the ground of the whole window in the colours of its palette.
    void paint(QPainter& painter) const;

private:
    QWidget& window_;
    double radius_;
    bool isComposited_;
};

} // namespace tidewell
