#pragma once

#include "desktop/appearance/LocalSettings.h"

#include <QDBusConnection>
#include <QObject>
#include <QVariant>

#include <cstddef>

namespace tidewell {

/// What the user chose for all programs: the font family, the icon theme, and whether things move.
/// Asked once, of `LocalSettings`, the settings portal and Xfconf. Qt's platform themes know as
/// much, but load the desktop's own libraries: 95 MB resident instead of 28 with GTK's, 128 with
/// Plasma's. Where none tells, the font is fontconfig's sans-serif, and things move. Main thread.
class DesktopLook final : public QObject {
public:
    /// After the application object, whose font this sets. Sets QIcon's themes as well.
    DesktopLook(const QDBusConnection& bus, const LookSettings& local);

    bool animationsAreWanted() const { return animationsAreWanted_; }

private:
    struct Setting;

    void take(const Setting& setting, std::size_t row, const QVariant& value);
    void takeFont(const QString& font, std::size_t row);
    void takeIcons(const QString& theme, std::size_t row);

    bool animationsAreWanted_ = true;
    // The rows of the table of settings that are in use: a later one prevails.
    std::size_t fontRow_ = 0;
    std::size_t iconsRow_ = 0;
};

} // namespace tidewell
