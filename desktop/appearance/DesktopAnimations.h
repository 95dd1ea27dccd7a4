#pragma once

#include <QDBusConnection>
#include <QObject>

namespace tidewell {

/// Whether the user wants animations. Asked once, when it is made, of the settings portal and of
/// Xfconf; true until one of them says no. Main thread.
class DesktopAnimations final : public QObject {
public:
    explicit DesktopAnimations(const QDBusConnection& bus);

    bool areWanted() const { return areWanted_; }

private:
    bool areWanted_ = true;
};

} // namespace tidewell
