#pragma once

#include <QDBusConnection>
#include <QObject>

namespace tidewell {

/// Whether the user wants things on the screen to move, as far as the desktop knows. Asked once,
/// when it is made, of the desktop portal and of Xfce's settings; until they have answered, and
/// where nobody does, things move. Main thread.
class DesktopAnimations final : public QObject {
public:
    explicit DesktopAnimations(const QDBusConnection& bus);

    bool areWanted() const { return areWanted_; }

private:
    bool areWanted_ = true;
};

} // namespace tidewell
