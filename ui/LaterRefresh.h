#pragma once

#include <QWidget>

#include <functional>
#include <utility>

namespace tidewell {

/// Brings a widget up to date with its models: at most once for all the changes of one pass of the
/// event loop, after it, when observed fields have their new values, and only while the widget is
/// visible. A member of the widget. Main thread.
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
