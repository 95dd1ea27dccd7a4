#include "desktop/appearance/DesktopLook.h"

#include "desktop/appearance/IconThemes.h"
#include "desktop/appearance/SettingsService.h"

#include <QApplication>
#include <QFontDatabase>

namespace tidewell {

struct DesktopLook::Setting {
    enum class Meaning { font, icons, noAnimations };

    const SettingsService& service;
    const char* group;
    const char* key;
    Meaning meaning;
    QVariant denial; ///< the value that switches animations off
};

namespace {

/// Of a font as Qt ("Noto Sans,10,-1") or Pango ("Noto Sans Bold 10") writes it; empty where it is
/// not installed.
QString installedFamily(const QString& font) {
    // Not hasFamily(), which also takes what fontconfig substitutes.
    const QStringList installed = QFontDatabase::families();
    QString family = font.section(u',', 0, 0);
    while (!family.isEmpty() && !installed.contains(family)) {
        family = family.section(u' ', 0, -2);
    }
    return family;
}

/// Whether `value` is `expected`; a number may come as a text, too.
bool isValue(const QVariant& value, const QVariant& expected) {
    if (expected.metaType() == QMetaType::fromType<bool>()) {
        return value == expected;
    }
    bool isNumber = false;
    return value.toDouble(&isNumber) == expected.toDouble() && isNumber;
}

} // namespace

DesktopLook::DesktopLook(const QDBusConnection& bus, const LookSettings& local)
    : animationsAreWanted_(local.animations.value_or(true)) {
    useCompleteIconTheme();
    // Portals tell GNOME's settings on other desktops, too: those of the desktop itself prevail.
    constexpr std::size_t rowsOfGnome = 2;
    takeFont(local.font, rowsOfGnome);
    takeIcons(local.iconTheme, rowsOfGnome);
    using enum Setting::Meaning;
    const std::array settings{
        Setting{portalSettings, "org.gnome.desktop.interface", "font-name", font, {}},
        Setting{portalSettings, "org.gnome.desktop.interface", "icon-theme", icons, {}},
        Setting{portalSettings, "org.kde.kdeglobals.General", "font", font, {}},
        Setting{portalSettings, "org.kde.kdeglobals.Icons", "Theme", icons, {}},
        Setting{xfceSettings, "xsettings", "/Gtk/FontName", font, {}},
        Setting{xfceSettings, "xsettings", "/Net/IconThemeName", icons, {}},
        Setting{portalSettings, "org.freedesktop.appearance", "reduced-motion", noAnimations, 1},
        Setting{portalSettings, "org.gnome.desktop.interface", "enable-animations", noAnimations,
                false},
        Setting{portalSettings, "org.kde.kdeglobals.KDE", "AnimationDurationFactor", noAnimations,
                0},
        Setting{xfceSettings, "xsettings", "/Gtk/EnableAnimations", noAnimations, false},
    };
    for (std::size_t row = 0; row < settings.size(); ++row) {
        const Setting& setting = settings.at(row);
        askForSetting(bus, setting.service, QString::fromLatin1(setting.group),
                      QString::fromLatin1(setting.key), *this,
                      [this, setting, row](const QVariant& value) { take(setting, row, value); });
    }
}

void DesktopLook::take(const Setting& setting, std::size_t row, const QVariant& value) {
    switch (setting.meaning) {
    case Setting::Meaning::font:
        takeFont(value.toString(), row);
        break;
    case Setting::Meaning::icons:
        takeIcons(value.toString(), row);
        break;
    case Setting::Meaning::noAnimations:
        animationsAreWanted_ = animationsAreWanted_ && !isValue(value, setting.denial);
        break;
    }
}

void DesktopLook::takeFont(const QString& font, std::size_t row) {
    if (const QString family = installedFamily(font); row >= fontRow_ && !family.isEmpty()) {
        fontRow_ = row;
        QFont changed = QApplication::font();
        changed.setFamily(family);
        QApplication::setFont(changed);
    }
}

void DesktopLook::takeIcons(const QString& theme, std::size_t row) {
    if (row >= iconsRow_ && useIconTheme(theme)) {
        iconsRow_ = row;
    }
}

} // namespace tidewell
