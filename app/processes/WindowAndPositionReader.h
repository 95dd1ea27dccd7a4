#pragma once

#include <QWidget>

#include <functional>
#include <optional>

namespace tidewell {

/// A view without content that tells, once, which window it has been put in and where that is on
/// the screen. It does so in the pass of the event loop after it was made, when its maker has put
/// it into its window; it is not told of later moves. Main thread.
class WindowAndPositionReader final : public QWidget {
public:
    /// `onWindowUpdate` gets the window, or null when the view is gone by then or in none.
    /// `onPositionUpdate`, after it and only with a window, gets the view's lower left corner,
    /// upward from that of the main screen. The callbacks outlive the view if they must: what they
    /// refer to lasts until they were called.
    WindowAndPositionReader(std::function<void(QWidget* window)> onWindowUpdate,
                            std::function<void(QPointF position)> onPositionUpdate,
                            QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QPointF corner() const;

    // Where the program has put the window, if it has: window managers report it elsewhere for a
    // moment after it came up, inside the frame that they gave it.
    std::optional<QPoint> windowPlace_;
};

} // namespace tidewell
