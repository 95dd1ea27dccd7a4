#include "app/settings/UpdateSettings.h"

#include "app/settings/Rows.h"
#include "ui/CheckBox.h"
#include "ui/Palette.h"
#include "ui/PushButton.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QPainter>

#include <utility>

namespace tidewell {

namespace {

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

} // namespace

UpdateSettings::UpdateSettings(std::shared_ptr<SparkleModel> model)
    : model_(std::move(model))
    , checksAutomatically_(new CheckBox(tr("Automatically check for updates")))
    , downloadsAutomatically_(new CheckBox(tr("Automatically download updates")))
    , modelChanges_(model_->objectWillChange([this] { later_.schedule(); })) {
    auto* column = makeColumn(this);
    column->addLayout(makeRow(checksAutomatically_));
    column->addLayout(makeRow(downloadsAutomatically_));
    column->addLayout(makeRow(makePicker()));
    column->addWidget(new Divider);
    column->addWidget(makeCheckRow());
    loadChoices();
    connect(checksAutomatically_, &QCheckBox::toggled, this, &UpdateSettings::applyAutomaticChecks);
    connect(downloadsAutomatically_, &QCheckBox::toggled, this,
            &UpdateSettings::applyAutomaticDownloads);
    connect(interval_, &QComboBox::currentIndexChanged, this, &UpdateSettings::applyCheckInterval);
}

QWidget* UpdateSettings::makePicker() {
    auto* picker = new QWidget;
    picker->setMinimumWidth(250); // more only for longer words
    auto* row = new QHBoxLayout(picker);
    row->setContentsMargins(ringRoom, 0, 0, 0);
    intervalLabel_ = new QLabel(tr("Update check interval"));
    interval_ = new Picker;
    interval_->addItem(tr("Hourly"), 3600.0);
    interval_->addItem(tr("Daily"), 86400.0);
    interval_->addItem(tr("Weekly"), 604800.0);
    interval_->addItem(tr("Monthly"), 2592000.0);
    intervalLabel_->setBuddy(interval_);
    row->addWidget(intervalLabel_);
    row->addWidget(interval_, 1);
    return picker;
}

QWidget* UpdateSettings::makeCheckRow() {
    checkNow_ = new PushButton(tr("Check for Updates now"));
    connect(checkNow_, &QPushButton::clicked, this, [this] {
        if (SPUUpdater* updater = model_->updater()) {
            updater->checkForUpdates();
        }
    });
    checkRow_ = new QWidget;
    auto* row = makeRow(checkNow_);
    row->setContentsMargins(ringRoom, 4, 0, 4);
    checkRow_->setLayout(row);
    return checkRow_;
}

void UpdateSettings::loadChoices() {
    if (SPUUpdater* updater = model_->updater()) {
        const double seconds = updater->updateCheckInterval();
        checksAutomatically_->setChecked(updater->automaticallyChecksForUpdates());
        downloadsAutomatically_->setChecked(updater->automaticallyDownloadsUpdates());
        interval_->setCurrentIndex(interval_->findData(seconds)); // none for one of another's
        updater->setUpdateCheckInterval(seconds);
    }
    applyAutomaticChecks(checksAutomatically_->isChecked());
    applyAutomaticDownloads(downloadsAutomatically_->isChecked());
}

void UpdateSettings::applyAutomaticChecks(bool check) {
    SPUUpdater* const updater = model_->updater();
    if (updater != nullptr) {
        updater->setAutomaticallyChecksForUpdates(check);
        if (check && !model_->canCheckForUpdates()) {
            // The toggle shows the user's wish, whether or not it can be met.
            static_cast<void>(updater->startUpdater());
        }
    }
    model_->setCanCheckForUpdates(check);
    refresh();
}

void UpdateSettings::applyAutomaticDownloads(bool download) {
    if (SPUUpdater* updater = model_->updater()) {
        updater->setAutomaticallyDownloadsUpdates(download);
    }
}

void UpdateSettings::applyCheckInterval() {
    SPUUpdater* updater = model_->updater();
    if (updater != nullptr && interval_->currentIndex() >= 0) {
        updater->setUpdateCheckInterval(interval_->currentData().toDouble());
    }
}

// Later: the model's fields still have their old values when it tells of a change.
void UpdateSettings::refresh() {
    const bool canCheck = model_->canCheckForUpdates();
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
    checkRow_->setVisible(model_->updater() != nullptr);
}

} // namespace tidewell
