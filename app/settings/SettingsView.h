#pragma once

#include "base/ports/LoginItem.h"
#include "base/ports/UserDefaults.h"
#include "model/updates/SparkleModel.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <string>

namespace tidewell {

/// The content of the settings window. Each choice takes effect at the moment it is made. Main
/// thread.
class SettingsView final : public QWidget {
    Q_OBJECT

public:
    struct Environment {
        UserDefaults& defaults;
        LoginItem& loginItem;
        std::string applicationName;
        /// Null in a program that others update: then there is nothing about updates.
        std::shared_ptr<SparkleModel> sparkleModel;
        /// Whether the user wants things to move; asked each time something would.
        std::function<bool()> animationsAreWanted;
    };

    explicit SettingsView(Environment environment);

private:
    QWidget* makeGeneralSettings();
    void setStartAtLogin(bool start);

    Environment environment_;
};

} // namespace tidewell
