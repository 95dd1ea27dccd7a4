#include "ui/Gauge.h"

#include "ui/Accessible.h"

#include <algorithm>
#include <cmath>

namespace tidewell {

namespace {

class AccessibleGauge final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleGauge(Gauge* gauge)
        : QAccessibleWidget(gauge, QAccessible::ProgressBar) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text which) const override {
        const QString set = QAccessibleWidget::text(which);
        const bool isReading = which == QAccessible::Value || which == QAccessible::Description;
        return set.isEmpty() && isReading ? gauge().reading().text : set;
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }

    QVariant currentValue() const override { return gauge().reading().value; }
    void setCurrentValue(const QVariant&) override {}
    QVariant maximumValue() const override { return gauge().reading().maximum; }
    QVariant minimumValue() const override { return gauge().reading().minimum; }
    QVariant minimumStepSize() const override { return {}; }

private:
    const Gauge& gauge() const { return *static_cast<Gauge*>(widget()); }
};

} // namespace

double gaugeFraction(double value, double minimum, double maximum) {
    const double range = maximum - minimum;
    if (std::isnan(value) || !std::isfinite(range) || range <= 0) {
        return 0;
    }
    return (std::clamp(value, minimum, maximum) - minimum) / range;
}

Gauge::Gauge() {
    makeAccessible<Gauge, AccessibleGauge>();
}

void Gauge::tellOfChange(const Reading& before) {
    const Reading now = reading();
    if (now.value != before.value || now.minimum != before.minimum ||
        now.maximum != before.maximum) {
        QAccessibleValueChangeEvent event(this, now.value);
        QAccessible::updateAccessibility(&event);
    }
    if (now.text != before.text) {
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace tidewell
