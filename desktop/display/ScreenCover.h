#pragma once

#include <QBackingStore>
#include <QWindow>

#include <functional>

namespace tidewell {

/// An invisible window over all of a screen that takes the clicks and the pointer in place of what
/// is below: on Wayland nothing else tells of a click on a bar or a bare desktop, and windows below
/// would get the focus where that follows the pointer. Only with the layer shell. Main thread.
class ScreenCover final : public QWindow {
public:
    /// Shown until it is destroyed, which `clicked` may ask for later, but must not do itself.
    ScreenCover(QScreen& screen, std::function<void()> clicked);

protected:
    void exposeEvent(QExposeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void touchEvent(QTouchEvent* event) override;

private:
    std::function<void()> clicked_;
    QBackingStore store_{this};
};

} // namespace tidewell
