#pragma once

#include "desktop/appearance/LocalSettings.h"

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <map>

namespace tidewell {

/// What the user chose for all programs: the font, the icon theme, and whether things move.
/// Asked once, of `LocalSettings`, the settings portal and Xfconf. Qt's platform themes know as
/// much, but load the desktop's own libraries: 95 MB resident instead of 28 with GTK's, 128 with
/// Plasma's. Where none tells, the font is fontconfig's sans-serif, and things move. Main thread.
class DesktopLook final : public QObject {
public:
    /// After the application object, whose font this sets, its family when the first widget is
    /// about to be shown: looking for fonts takes half a megabyte. Sets QIcon's themes as well.
    DesktopLook(const QDBusConnection& bus, const LookSettings& localSettings);

    bool animationsAreWanted() const { return animationsAreWanted_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void takeFont(const QString& font, int rank);
    void useFont() const;
    void takeIcons(const QString& theme, int rank);

    bool animationsAreWanted_ = true;
    std::map<int, QString, std::greater<>> fonts_; // by the ranks of their sources
    bool isFontNeeded_ = false;
    int iconsRank_ = 0; // of the source that they are from
};

} // namespace tidewell
