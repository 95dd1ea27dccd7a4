#include "app/settings/SettingsView.h"

#include "app/settings/PollingSettings.h"
#include "app/settings/Rows.h"
#include "app/settings/UpdateSettings.h"
#include "model/preferences/StoredPreferences.h"
#include "ui/CheckBox.h"
#include "ui/Fonts.h"
#include "ui/TitledBox.h"

namespace tidewell {

namespace {

TitledBox* makeBox(const QString& title, QWidget* content) {
    constexpr int padding = 8;
    auto* box = new TitledBox(title, content);
    box->setContentMargins({padding - ringRoom, 6, padding, padding});
    return box;
}

} // namespace

SettingsView::SettingsView(Environment environment)
    : environment_(std::move(environment)) {
    setFont(textFont(TextStyle::body));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 8, 16, 12);
    column->setSpacing(8);
    column->addWidget(makeBox(tr("General"), makeGeneralSettings()), 1);
    if (environment_.sparkleModel) {
        column->addWidget(makeBox(tr("Updates"), new UpdateSettings(environment_.sparkleModel)));
    }
}

QWidget* SettingsView::makeGeneralSettings() {
    auto* content = new QWidget;
    auto* column = makeColumn(content);

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
    column->addWidget(new PollingSettings(environment_.defaults, environment_.animationsAreWanted));
    return content;
}

void SettingsView::setStartAtLogin(bool start) {
    write(environment_.defaults, preferences::startAtLogin, start);
    // The user's wish stays, whatever comes of it: nothing is shown, and a later change tries
    // again.
    static_cast<void>(start ? environment_.loginItem.registerApplication()
                            : environment_.loginItem.unregisterApplication());
}

} // namespace tidewell
