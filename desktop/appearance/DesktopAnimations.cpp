#include "desktop/appearance/DesktopAnimations.h"

#include "desktop/appearance/SettingsService.h"

namespace tidewell {

namespace {

struct Setting {
    const SettingsService& service;
    QString group;
    QString key;
    bool (*wantsNone)(const QVariant& value);
};

// An invalid value, or one of another type, is none of these.
bool isFalse(const QVariant& value) {
    return value.metaType() == QMetaType::fromType<bool>() && !value.toBool();
}

bool isOne(const QVariant& value) {
    bool isNumber = false;
    return value.toUInt(&isNumber) == 1 && isNumber;
}

bool isZero(const QVariant& value) { // a number, or its text
    bool isNumber = false;
    return value.toDouble(&isNumber) == 0 && isNumber;
}

} // namespace

DesktopAnimations::DesktopAnimations(const QDBusConnection& bus) {
    for (const auto& [service, group, key, wantsNone] : {
             Setting{portalSettings, QStringLiteral("org.freedesktop.appearance"),
                     QStringLiteral("reduced-motion"), isOne},
             Setting{portalSettings, QStringLiteral("org.gnome.desktop.interface"),
                     QStringLiteral("enable-animations"), isFalse},
             Setting{portalSettings, QStringLiteral("org.kde.kdeglobals.KDE"),
                     QStringLiteral("AnimationDurationFactor"), isZero},
             Setting{xfceSettings, QStringLiteral("xsettings"),
                     QStringLiteral("/Gtk/EnableAnimations"), isFalse},
         }) {
        askForSetting(bus, service, group, key, *this, [this, wantsNone](const QVariant& value) {
            areWanted_ = areWanted_ && !wantsNone(value);
        });
    }
}

} // namespace tidewell
