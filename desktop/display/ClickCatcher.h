#pragma once

#include <QWindow>

#include <functional>

namespace tidewell {

/// A transparent window over all of a screen, with holes where the program's windows are. Under
/// XWayland nothing else tells that the pointer leaves these for a window of Wayland, nor of clicks
/// there. It takes the clicks, as the desktop's own menus do. Main thread.
class ClickCatcher final : public QWindow {
public:
    /// Shown until it is destroyed, which `clicked`, called for each press of a button, may ask for
    /// later, but must not do itself.
    ClickCatcher(QScreen& screen, std::function<void()> clicked);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void leaveHoles();

    std::function<void()> clicked_;
};

} // namespace tidewell
