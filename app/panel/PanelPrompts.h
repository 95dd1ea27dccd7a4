#pragma once

#include <QWidget>

#include <functional>

namespace tidewell {

class PushButton;

/// The two prompts below the panel's title, each there only while it is needed. Main thread.
class PanelPrompts final : public QWidget {
    Q_OBJECT

public:
    struct Actions {
        /// False where the desktop has no notification settings; then the user is told so.
        std::function<bool()> openNotificationSettings;
        std::function<void()> checkForUpdates;
    };
    PanelPrompts(QString applicationName, Actions actions);

    void setShown(bool notificationPrompt, bool updatePrompt);

protected:
    void changeEvent(QEvent* event) override;

private:
    PushButton* addPrompt(const QString& title, std::function<void()> action);
    void showNotificationSettings();
    void applyPalette();

    QString applicationName_;
    Actions actions_;
    PushButton* notificationPrompt_;
    PushButton* updatePrompt_;
};

} // namespace tidewell
