#pragma once

#include "base/ports/LoginItem.h"
#include "base/ports/UserDefaults.h"
#include "model/updates/SparkleModel.h"
#include "ui/LaterRefresh.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <string>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QSlider;

namespace tidewell {

class SymbolButton;

/// What the settings window shows of a polling interval: whole seconds, towards zero. What is not
/// a number counts as 0, what no 64-bit number holds as the nearest that one does. Pure.
std::int64_t wholeSeconds(double seconds);

/// The content of the settings window. Each choice takes effect at the moment it is made. When it
/// appears, it takes the updater's own choices over, so that its controls show them; then it acts
/// on the two toggles of updates as if the user had just set them. Main thread.
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

    explicit SettingsView(Environment environment, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* makeGeneralBox();
    QWidget* makePollingRow();
    QWidget* makeUpdatesBox();

    void setStartAtLogin(bool start);
    void setPollingInterval(double seconds);
    void setEditing(bool isEditing);
    void showPollingInterval();

    void loadUpdaterChoices();
    void applyAutomaticChecks(bool check);
    void applyAutomaticDownloads(bool download);
    void applyCheckInterval(double seconds);
    void refreshUpdateControls();

    Environment environment_;
    double kPollingInterval_;
    bool isEditing_ = false;
    bool hasAppeared_ = false;
    LaterRefresh later_{*this, [this] { refreshUpdateControls(); }};

    // Owned by their parents.
    SymbolButton* hare_ = nullptr;
    SymbolButton* tortoise_ = nullptr;
    QSlider* slider_ = nullptr;
    QLabel* pollingLabel_ = nullptr;
    QCheckBox* checksAutomatically_ = nullptr;
    QCheckBox* downloadsAutomatically_ = nullptr;
    QLabel* intervalLabel_ = nullptr;
    QComboBox* interval_ = nullptr;
    QPushButton* checkNow_ = nullptr;
    QWidget* checkRow_ = nullptr;
    Subscription modelChanges_;
};

} // namespace tidewell
