#include "app/settings/PollingSettings.h"

#include "app/settings/Rows.h"
#include "base/text/IntegerText.h"
#include "model/preferences/StoredPreferences.h"
#include "ui/Palette.h"
#include "ui/StepSlider.h"
#include "ui/SymbolButton.h"

#include <QEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tidewell {

namespace {

constexpr double shortestInterval = 1;
constexpr double longestInterval = 5;
constexpr int symbolSize = 22;

/// Towards zero. What is not a number counts as 0, what no 64-bit number holds as the nearest that
/// one does.
std::int64_t wholeSeconds(double seconds) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    if (std::isnan(seconds)) {
        return 0;
    }
    if (seconds >= static_cast<double>(most)) { // 2^63, the first that is too large
        return most;
    }
    return seconds < static_cast<double>(least) ? least : static_cast<std::int64_t>(seconds);
}

} // namespace

PollingSettings::PollingSettings(UserDefaults& defaults, std::function<bool()> animationsAreWanted)
    : defaults_(defaults)
    , animationsAreWanted_(std::move(animationsAreWanted))
    , kPollingInterval_(readForView(defaults, preferences::pollingInterval))
    , hare_(makeStepper("hare", tr("Poll more often"), -1))
    , tortoise_(makeStepper("tortoise", tr("Poll less often"), 1))
    , slider_(new StepSlider(static_cast<int>(shortestInterval), static_cast<int>(longestInterval)))
    , label_(new QLabel) {
    slider_->setAccessibleName(tr("Polling interval in seconds"));
    connect(slider_, &QSlider::sliderPressed, this, [this] { setEditing(true); });
    connect(slider_, &QSlider::sliderReleased, this, [this] { setEditing(false); });
    connect(slider_, &QSlider::valueChanged, this, &PollingSettings::setInterval);
    label_->setContentsMargins(ringRoom, 0, 0, 0);

    auto* stepper = new QWidget;
    auto* row = new QHBoxLayout(stepper);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(hare_);
    row->addWidget(slider_, 1);
    row->addWidget(tortoise_);
    auto* column = makeColumn(this);
    column->addWidget(stepper);
    column->addWidget(label_);
    showInterval();
}

SymbolButton* PollingSettings::makeStepper(const char* symbol, const QString& name, double step) {
    auto* button = new SymbolButton(symbol, name, symbolSize);
    connect(button, &QAbstractButton::clicked, this, [this, step] {
        if (step < 0 ? kPollingInterval_ > shortestInterval : kPollingInterval_ < longestInterval) {
            setInterval(kPollingInterval_ + step);
        }
    });
    return button;
}

void PollingSettings::setInterval(double seconds) {
    if (seconds == kPollingInterval_) {
        return;
    }
    kPollingInterval_ = seconds;
    write(defaults_, preferences::pollingInterval, seconds);
    showInterval();
    // A style that moves nothing has no animations of its own to time.
    if (animationsAreWanted_() &&
        style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) != 0) {
        hare_->bounce();
        tortoise_->bounce();
    }
}

void PollingSettings::setEditing(bool isEditing) {
    isEditing_ = isEditing;
    showInterval();
}

void PollingSettings::showInterval() {
    const QSignalBlocker blocker(slider_); // shows the nearest it can, and changes nothing by it
    const double shown = std::isnan(kPollingInterval_)
                             ? shortestInterval
                             : std::clamp(kPollingInterval_, shortestInterval, longestInterval);
    slider_->setValue(static_cast<int>(std::lround(shown)));

    const std::int64_t seconds = wholeSeconds(kPollingInterval_);
    const auto count =
        static_cast<int>(std::clamp<std::int64_t>(seconds, 0, std::numeric_limits<int>::max()));
    label_->setText((kPollingInterval_ > 1 ? tr("Polling interval: %1 secs", nullptr, count)
                                           : tr("Polling interval: %1 sec", nullptr, count))
                        .arg(QString::fromStdString(integerText(seconds))));
    QPalette colours; // none of its own
    if (isEditing_) {
        colours.setColor(label_->foregroundRole(),
                         textColour(colours::systemRed, appearanceOf(palette())));
    }
    label_->setPalette(colours);
}

void PollingSettings::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && isEditing_) {
        showInterval();
    }
    QWidget::changeEvent(event);
}

} // namespace tidewell
