#include "desktop/appearance/LocalSettings.h"

#include "desktop/appearance/XSettings.h"
#include "desktop/display/X11.h"

#include <QColor>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace tidewell {

namespace {

constexpr int darkLightness = 128; // of 255

QString text(const QSettings& file, const char* key) {
    // A text with commas may be read as a list.
    return file.value(QLatin1String(key)).toStringList().join(u',');
}

QSettings lxqtFile() {
    const QString name = QStringLiteral("lxqt");
    return {QSettings::NativeFormat, QSettings::UserScope, name, name};
}

/// Colours and font of Qt programs.
LookSettings lxqtSettings() {
    const QSettings file = lxqtFile();
    LookSettings look{.font = text(file, "Qt/font"), .iconTheme = text(file, "icon_theme")};
    if (const QColor window(text(file, "Palette/window_color")); window.isValid()) {
        look.appearance = window.lightness() < darkLightness ? Appearance::dark : Appearance::light;
    }
    return look;
}

LookSettings gtkSettings() {
    const QString name = QStandardPaths::locate(QStandardPaths::GenericConfigLocation,
                                                QStringLiteral("gtk-3.0/settings.ini"));
    QSettings file(name, QSettings::IniFormat);
    file.beginGroup(QStringLiteral("Settings"));
    LookSettings look{.appearance = themeAppearance(text(file, "gtk-theme-name")),
                      .font = text(file, "gtk-font-name"),
                      .iconTheme = text(file, "gtk-icon-theme-name")};
    if (file.value(QStringLiteral("gtk-application-prefer-dark-theme")).toBool()) {
        look.appearance = Appearance::dark;
    }
    if (const QVariant moves = file.value(QStringLiteral("gtk-enable-animations"));
        moves.isValid()) {
        look.animations = moves.toBool();
    }
    return look;
}

/// What `first` says, and what `second` does where that says nothing.
LookSettings merged(LookSettings first, const LookSettings& second) {
    first.appearance = first.appearance ? first.appearance : second.appearance;
    first.font = first.font.isEmpty() ? second.font : first.font;
    first.iconTheme = first.iconTheme.isEmpty() ? second.iconTheme : first.iconTheme;
    first.animations = first.animations ? first.animations : second.animations;
    return first;
}

} // namespace

std::optional<Appearance> themeAppearance(const QString& name) {
    if (name.isEmpty()) {
        return std::nullopt;
    }
    constexpr std::array darkWords{"black", "inverse", "dark"};
    const bool isDark = std::ranges::any_of(darkWords, [&name](const char* word) {
        return name.contains(QLatin1String(word), Qt::CaseInsensitive);
    });
    const Appearance usual = isDark && !name.contains(QLatin1String("darker"), Qt::CaseInsensitive)
                                 ? Appearance::dark
                                 : Appearance::light;
    return name.startsWith(QLatin1String("HighContrast")) ? withHighContrast(usual) : usual;
}

LocalSettings::LocalSettings(const QString& desktops)
    : isLxqt_(desktops.split(u':').contains(QStringLiteral("LXQt")))
    , gtk_(gtkSettings()) {
    if (isLxqt_) {
        // The folder: the file is replaced at each change.
        lxqtFolder_.addPath(QFileInfo(lxqtFile().fileName()).path());
        QObject::connect(&lxqtFolder_, &QFileSystemWatcher::directoryChanged, &lxqtFolder_,
                         [this] { read(); });
    }
    read();
}

void LocalSettings::read() {
    const LookSettings last = merged(xsettings(), gtk_);
    look_ = isLxqt_ ? merged(lxqtSettings(), last) : last;
    observers_.tell();
}

LookSettings LocalSettings::xsettings() const {
    const auto settings = parseXSettings(x11::property(owner_.window(), owner_.property()));
    if (!settings) {
        return {};
    }
    LookSettings look{.appearance = themeAppearance(settings->value("Net/ThemeName").toString()),
                      .font = settings->value("Gtk/FontName").toString(),
                      .iconTheme = settings->value("Net/IconThemeName").toString()};
    if (const QVariant moves = settings->value("Gtk/EnableAnimations"); moves.isValid()) {
        look.animations = moves != 0;
    }
    return look;
}

} // namespace tidewell
