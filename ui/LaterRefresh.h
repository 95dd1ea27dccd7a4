#pragma once

#include <QWidget>

#include <functional>
#include <utility>

namespace tidewell {

/// A widget's dirty flag: `refresh` runs once for all changes of one event-loop pass, queued, since
/// models notify before a field has its new value, and only while the widget is visible. A member
/// of the widget. Main thread.
class LaterRefresh final {
public:
    LaterRefresh(QWidget& widget, std::function<void()> refresh)
        : widget_(widget)
        , refresh_(std::move(refresh)) {}

    void schedule() {
        if (isScheduled_ || !widget_.isVisible()) {
            return;
        }
        isScheduled_ = true;
        QMetaObject::invokeMethod(
            &widget_,
            [this] {
                isScheduled_ = false;
                if (widget_.isVisible()) {
                    refresh_();
                }
            },
            Qt::QueuedConnection);
    }

private:
    QWidget& widget_;
    std::function<void()> refresh_;
    bool isScheduled_ = false;
};

} // namespace tidewell
