#pragma once

#include <QWindow>

#include <functional>

namespace tidewell {

/// A transparent window over the whole desktop, with holes where the program's windows are. Under
/// XWayland nothing else tells that the pointer leaves these for a window of Wayland, nor of clicks
/// there. It takes the clicks, as the desktop's own menus do. Main thread.
class ClickCatcher final : public QWindow {
public:
    /// `clicked` is called for each press of a button. After the application object.
    explicit ClickCatcher(std::function<void()> clicked);

    /// Off at first.
    void setOn(bool isOn);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void leaveHoles();

    std::function<void()> clicked_;
};

} // namespace tidewell
