#pragma once

#include "desktop/appearance/LocalSettings.h"

#include <QDBusConnection>
#include <QObject>

namespace tidewell {

/// What the user chose for all programs: the font family, the icon theme, and whether things move.
/// Asked once, of `LocalSettings`, the settings portal and Xfconf. Qt's platform themes know as
/// much, but load the desktop's own libraries: 95 MB resident instead of 28 with GTK's, 128 with
/// Plasma's. Where none tells, the font is fontconfig's sans-serif, and things move. Main thread.
class DesktopLook final : public QObject {
public:
    /// After the application object, whose font this sets. Sets QIcon's themes as well.
    DesktopLook(const QDBusConnection& bus, const LookSettings& localSettings);

    bool animationsAreWanted() const { return animationsAreWanted_; }

private:
    void takeFont(const QString& font, int rank);
    void takeIcons(const QString& theme, int rank);

    bool animationsAreWanted_ = true;
    int fontRank_ = 0; // of the sources that they are from
    int iconsRank_ = 0;
};

} // namespace tidewell
