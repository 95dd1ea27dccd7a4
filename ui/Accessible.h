#pragma once

#include <QAccessibleWidget>
#include <QWidget>

namespace tidewell {

/// What assistive technology is told of a widget that has a role and nothing else of its own.
template <QAccessible::Role which>
struct AccessibleAs final : QAccessibleWidget {
    explicit AccessibleAs(QWidget* widget)
        : QAccessibleWidget(widget, which) {}
};

/// From now on assistive technology reads each `Widget` through an `Interface` that is constructed
/// with a pointer to it. To be called before the first is shown; more often does no harm. Main
/// thread.
template <typename Widget, typename Interface>
void makeAccessible() {
    QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
        auto* const widget = dynamic_cast<Widget*>(object);
        return widget == nullptr ? nullptr : new Interface(widget); // Qt takes it over
    });
}

/// From now on top-level widgets without a class of Qt's own have the role of a window, which Qt
/// gives to main windows only. To be called before the first is made: Qt may ask at once. Main
/// thread.
inline void makeWindowsAccessible() {
    QAccessible::installFactory([](const QString& name, QObject* object) -> QAccessibleInterface* {
        auto* const widget = qobject_cast<QWidget*>(object);
        return widget != nullptr && widget->isWindow() && name == QStringLiteral("QWidget")
                   ? new AccessibleAs<QAccessible::Window>(widget) // Qt takes it over
                   : nullptr;
    });
}

} // namespace tidewell
