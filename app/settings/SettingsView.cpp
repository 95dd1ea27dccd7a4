#include "app/settings/SettingsView.h"

#include "base/text/IntegerText.h"
#include "model/preferences/StoredPreferences.h"
#include "ui/CheckBox.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"
#include "ui/PushButton.h"
#include "ui/StepSlider.h"
#include "ui/SymbolButton.h"
#include "ui/TitledBox.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tidewell {

namespace {

constexpr double shortestInterval = 1;
constexpr double longestInterval = 5;
constexpr double intervalStep = 1;
constexpr int boxPadding = 8;
constexpr int symbolSize = 22;
/// What check boxes keep beside their squares for the ring of the keyboard's focus. The rest lines
/// up with the squares.
constexpr int ringRoom = 2;

/// The interval that the picker shows until it is told the updater's.
constexpr double initialCheckInterval = 3600;

struct CheckInterval {
    const char* label;
    double seconds;
};
constexpr std::array checkIntervals{
    CheckInterval{QT_TRANSLATE_NOOP("tidewell::SettingsView", "Hourly"), 3600},
    CheckInterval{QT_TRANSLATE_NOOP("tidewell::SettingsView", "Daily"), 86400},
    CheckInterval{QT_TRANSLATE_NOOP("tidewell::SettingsView", "Weekly"), 604800},
    CheckInterval{QT_TRANSLATE_NOOP("tidewell::SettingsView", "Monthly"), 2592000},
};

class Divider final : public QWidget {
public:
    Divider() { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), hairline(appearanceOf(palette())));
    }
};

/// Its list is a window of its own, which would take the application's colours.
class Picker final : public QComboBox {
public:
    void showPopup() override {
        const QPalette colours = window()->palette(); // inherited ones would give way
        view()->setPalette(colours);
        view()->window()->setPalette(colours);
        QComboBox::showPopup();
    }
};

QVBoxLayout* makeColumn(QWidget* owner, int spacing) {
    auto* column = new QVBoxLayout(owner);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    return column;
}

/// The control at the side where lines begin, as wide as it needs to be.
QHBoxLayout* makeRow(QWidget* control) {
    auto* row = new QHBoxLayout;
    row->addWidget(control);
    row->addStretch();
    return row;
}

} // namespace

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

SettingsView::SettingsView(Environment environment, QWidget* parent)
    : QWidget(parent)
    , environment_(std::move(environment))
    , kPollingInterval_(readForView(environment_.defaults, preferences::pollingInterval)) {
    setFont(textFont(TextStyle::body));
    auto* column = makeColumn(this, 8);
    column->setContentsMargins(16, 8, 16, 12);
    column->addWidget(makeGeneralBox(), 1);
    if (environment_.sparkleModel) {
        column->addWidget(makeUpdatesBox());
        modelChanges_ = environment_.sparkleModel->objectWillChange([this] { later_.schedule(); });
    }
}

QWidget* SettingsView::makeGeneralBox() {
    auto* content = new QWidget;
    auto* column = makeColumn(content, 3);

    auto* startAtLogin = new CheckBox(
        tr("Start %1 at login").arg(QString::fromStdString(environment_.applicationName)));
    startAtLogin->setChecked(readForView(environment_.defaults, preferences::startAtLogin));
    connect(startAtLogin, &QCheckBox::toggled, this, &SettingsView::setStartAtLogin);
    column->addLayout(makeRow(startAtLogin));

    auto* confirmQuit = new CheckBox(tr("Confirm quit on exit"));
    confirmQuit->setChecked(readForView(environment_.defaults, preferences::confimQuitOnExit));
    connect(confirmQuit, &QCheckBox::toggled, this, [this](bool confirm) {
        write(environment_.defaults, preferences::confimQuitOnExit, confirm);
    });
    column->addLayout(makeRow(confirmQuit));

    column->addStretch();
    column->addWidget(makePollingRow());
    pollingLabel_ = new QLabel;
    pollingLabel_->setContentsMargins(ringRoom, 0, 0, 0);
    column->addWidget(pollingLabel_);
    showPollingInterval();

    auto* box = new TitledBox(tr("General"), content);
    box->setContentMargins({boxPadding - ringRoom, 6, boxPadding, boxPadding});
    return box;
}

QWidget* SettingsView::makePollingRow() {
    auto* content = new QWidget;
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(0, 0, 0, 0);

    hare_ = new SymbolButton("hare", tr("Poll more often"), symbolSize);
    connect(hare_, &QAbstractButton::clicked, this, [this] {
        if (kPollingInterval_ > shortestInterval) {
            setPollingInterval(kPollingInterval_ - intervalStep);
        }
    });
    tortoise_ = new SymbolButton("tortoise", tr("Poll less often"), symbolSize);
    connect(tortoise_, &QAbstractButton::clicked, this, [this] {
        if (kPollingInterval_ < longestInterval) {
            setPollingInterval(kPollingInterval_ + intervalStep);
        }
    });

    slider_ = new StepSlider(static_cast<int>(shortestInterval), static_cast<int>(longestInterval));
    slider_->setAccessibleName(tr("Polling interval in seconds"));
    connect(slider_, &QSlider::sliderPressed, this, [this] { setEditing(true); });
    connect(slider_, &QSlider::sliderReleased, this, [this] { setEditing(false); });
    connect(slider_, &QSlider::valueChanged, this,
            [this](int seconds) { setPollingInterval(seconds); });

    row->addWidget(hare_);
    row->addWidget(slider_, 1);
    row->addWidget(tortoise_);
    return content;
}

QWidget* SettingsView::makeUpdatesBox() {
    auto* content = new QWidget;
    auto* column = makeColumn(content, 3);

    checksAutomatically_ = new CheckBox(tr("Automatically check for updates"));
    connect(checksAutomatically_, &QCheckBox::toggled, this, &SettingsView::applyAutomaticChecks);
    column->addLayout(makeRow(checksAutomatically_));
    downloadsAutomatically_ = new CheckBox(tr("Automatically download updates"));
    connect(downloadsAutomatically_, &QCheckBox::toggled, this,
            &SettingsView::applyAutomaticDownloads);
    column->addLayout(makeRow(downloadsAutomatically_));

    auto* picker = new QWidget;
    picker->setMinimumWidth(250); // more only for longer words
    auto* pickerRow = new QHBoxLayout(picker);
    pickerRow->setContentsMargins(ringRoom, 0, 0, 0);
    intervalLabel_ = new QLabel(tr("Update check interval"));
    interval_ = new Picker;
    for (const auto& [label, seconds] : checkIntervals) {
        interval_->addItem(tr(label), seconds);
    }
    intervalLabel_->setBuddy(interval_);
    connect(interval_, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index >= 0) {
            applyCheckInterval(interval_->itemData(index).toDouble());
        }
    });
    pickerRow->addWidget(intervalLabel_);
    pickerRow->addWidget(interval_, 1);
    column->addLayout(makeRow(picker));
    column->addWidget(new Divider);

    checkNow_ = new PushButton(tr("Check for Updates now"));
    connect(checkNow_, &QPushButton::clicked, this, [this] {
        if (SPUUpdater* updater = environment_.sparkleModel->updater()) {
            updater->checkForUpdates();
        }
    });
    checkRow_ = new QWidget;
    auto* checkLayout = makeRow(checkNow_);
    checkLayout->setContentsMargins(ringRoom, 4, 0, 4);
    checkRow_->setLayout(checkLayout);
    column->addWidget(checkRow_);

    auto* box = new TitledBox(tr("Updates"), content);
    box->setContentMargins({boxPadding - ringRoom, 6, boxPadding, boxPadding});
    refreshUpdateControls();
    return box;
}

void SettingsView::setStartAtLogin(bool start) {
    write(environment_.defaults, preferences::startAtLogin, start);
    // The user's wish stays, whatever comes of it: nothing is shown, and a later change tries
    // again.
    static_cast<void>(start ? environment_.loginItem.registerApplication()
                            : environment_.loginItem.unregisterApplication());
}

void SettingsView::setPollingInterval(double seconds) {
    if (seconds == kPollingInterval_) {
        return;
    }
    kPollingInterval_ = seconds;
    write(environment_.defaults, preferences::pollingInterval, seconds);
    showPollingInterval();
    // A style that moves nothing has no animations of its own to time.
    if (environment_.animationsAreWanted() &&
        style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) != 0) {
        hare_->bounce();
        tortoise_->bounce();
    }
}

void SettingsView::setEditing(bool isEditing) {
    isEditing_ = isEditing;
    showPollingInterval();
}

void SettingsView::showPollingInterval() {
    const QSignalBlocker blocker(slider_); // shows the nearest it can, and changes nothing by it
    const double shown = std::isnan(kPollingInterval_)
                             ? shortestInterval
                             : std::clamp(kPollingInterval_, shortestInterval, longestInterval);
    slider_->setValue(static_cast<int>(std::lround(shown)));

    const std::int64_t seconds = wholeSeconds(kPollingInterval_);
    const auto count =
        static_cast<int>(std::clamp<std::int64_t>(seconds, 0, std::numeric_limits<int>::max()));
    pollingLabel_->setText((kPollingInterval_ > 1 ? tr("Polling interval: %1 secs", nullptr, count)
                                                  : tr("Polling interval: %1 sec", nullptr, count))
                               .arg(QString::fromStdString(integerText(seconds))));
    QPalette colours; // none of its own
    if (isEditing_) {
        colours.setColor(pollingLabel_->foregroundRole(),
                         textColour(colours::systemRed, appearanceOf(palette())));
    }
    pollingLabel_->setPalette(colours);
}

void SettingsView::showEvent(QShowEvent* event) {
    if (!std::exchange(hasAppeared_, true) && environment_.sparkleModel) {
        loadUpdaterChoices();
    }
    QWidget::showEvent(event);
}

void SettingsView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && isEditing_) {
        showPollingInterval();
    }
    QWidget::changeEvent(event);
}

void SettingsView::loadUpdaterChoices() {
    const SPUUpdater* const updater = environment_.sparkleModel->updater();
    const double seconds =
        updater != nullptr ? updater->updateCheckInterval() : initialCheckInterval;
    {
        const QSignalBlocker checks(checksAutomatically_);
        const QSignalBlocker downloads(downloadsAutomatically_);
        const QSignalBlocker interval(interval_);
        checksAutomatically_->setChecked(updater != nullptr &&
                                         updater->automaticallyChecksForUpdates());
        downloadsAutomatically_->setChecked(updater != nullptr &&
                                            updater->automaticallyDownloadsUpdates());
        interval_->setCurrentIndex(interval_->findData(seconds)); // none for one of another's
    }
    applyAutomaticChecks(checksAutomatically_->isChecked());
    applyAutomaticDownloads(downloadsAutomatically_->isChecked());
    if (seconds != initialCheckInterval) {
        applyCheckInterval(seconds);
    }
}

void SettingsView::applyAutomaticChecks(bool check) {
    SparkleModel& model = *environment_.sparkleModel;
    SPUUpdater* const updater = model.updater();
    if (updater != nullptr) {
        updater->setAutomaticallyChecksForUpdates(check);
        if (check && !model.canCheckForUpdates()) {
            // The toggle shows the user's wish, whether or not it can be met.
            static_cast<void>(updater->startUpdater());
        }
    }
    model.setCanCheckForUpdates(check);
    refreshUpdateControls();
}

void SettingsView::applyAutomaticDownloads(bool download) {
    if (SPUUpdater* updater = environment_.sparkleModel->updater()) {
        updater->setAutomaticallyDownloadsUpdates(download);
    }
}

void SettingsView::applyCheckInterval(double seconds) {
    if (SPUUpdater* updater = environment_.sparkleModel->updater()) {
        updater->setUpdateCheckInterval(seconds);
    }
}

// Later: the model's fields still have their old values when it tells of a change.
void SettingsView::refreshUpdateControls() {
    const SparkleModel& model = *environment_.sparkleModel;
    const bool canCheck = model.canCheckForUpdates();
    downloadsAutomatically_->setEnabled(checksAutomatically_->isChecked());
    intervalLabel_->setEnabled(canCheck);
    interval_->setEnabled(canCheck);
    // A disabled widget hands its focus to the next one, where Space would then switch something.
    const bool hadFocus = checkNow_->hasFocus() || hasFocus();
    if (hadFocus && !canCheck) {
        setFocus();
    }
    checkNow_->setEnabled(canCheck);
    if (hadFocus && canCheck) {
        checkNow_->setFocus();
    }
    checkRow_->setVisible(model.updater() != nullptr);
}

} // namespace tidewell
