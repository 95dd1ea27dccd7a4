#include "desktop/appearance/DesktopLook.h"

#include "desktop/appearance/IconThemes.h"
#include "desktop/appearance/SettingsService.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QWidget>

#include <optional>

namespace tidewell {

namespace {

// Where several tell the font or the icons, the highest prevails: portals tell GNOME's settings on
// other desktops, too.
enum Rank : int { gnome, local, kde, xfce };

/// Of a font as Qt ("Noto Sans,10,-1") or Pango ("Noto Sans Bold 10") writes it; empty where it is
/// not installed.
QString installedFamily(const QString& font) {
    // Not hasFamily(), which also takes what fontconfig substitutes.
    const QStringList installed = QFontDatabase::families();
    QString family = font.section(u',', 0, 0).left(200); // any program may have set it
    while (!family.isEmpty() && !installed.contains(family)) {
        family = family.section(u' ', 0, -2);
    }
    return family;
}

/// In points; empty where none is told that anybody could read.
std::optional<double> pointSize(const QString& font) {
    const QString size = font.contains(u',') ? font.section(u',', 1, 1) : font.section(u' ', -1);
    const double points = size.toDouble(); // 0 where it is no number
    return points >= 6 && points <= 72 ? std::optional(points) : std::nullopt;
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

DesktopLook::DesktopLook(const QDBusConnection& bus, const LookSettings& localSettings)
    : animationsAreWanted_(localSettings.animations.value_or(true)) {
    useCompleteIconTheme();
    qApp->installEventFilter(this);
    takeFont(localSettings.font, local);
    takeIcons(localSettings.iconTheme, local);
    const auto ask = [&](const SettingsService& service, const char* group, const char* key,
                         std::function<void(const QVariant& value)> take) {
        askForSetting(bus, service, QString::fromLatin1(group), QString::fromLatin1(key), *this,
                      std::move(take));
    };
    const auto font = [this](Rank rank) {
        return [this, rank](const QVariant& value) { takeFont(value.toString(), rank); };
    };
    const auto icons = [this](Rank rank) {
        return [this, rank](const QVariant& value) { takeIcons(value.toString(), rank); };
    };
    const auto animations = [this](const QVariant& denial) {
        return [this, denial](const QVariant& value) {
            animationsAreWanted_ = animationsAreWanted_ && !isValue(value, denial);
        };
    };
    ask(portalSettings, "org.gnome.desktop.interface", "font-name", font(gnome));
    ask(portalSettings, "org.gnome.desktop.interface", "icon-theme", icons(gnome));
    ask(portalSettings, "org.kde.kdeglobals.General", "font", font(kde));
    ask(portalSettings, "org.kde.kdeglobals.Icons", "Theme", icons(kde));
    ask(xfceSettings, "xsettings", "/Gtk/FontName", font(xfce));
    ask(xfceSettings, "xsettings", "/Net/IconThemeName", icons(xfce));
    ask(portalSettings, "org.freedesktop.appearance", "reduced-motion", animations(1));
    ask(portalSettings, "org.gnome.desktop.interface", "enable-animations", animations(false));
    ask(portalSettings, "org.kde.kdeglobals.KDE", "AnimationDurationFactor", animations(0));
    ask(xfceSettings, "xsettings", "/Gtk/EnableAnimations", animations(false));
}

void DesktopLook::takeFont(const QString& font, int rank) {
    fonts_[rank] = font;
    for (const auto& [each, text] : fonts_) {
        if (const auto points = pointSize(text)) {
            QFont sized = QApplication::font();
            sized.setPointSizeF(*points);
            QApplication::setFont(sized);
            break;
        }
    }
    if (isFontNeeded_) {
        useFont();
    }
}

bool DesktopLook::eventFilter(QObject* watched, QEvent* event) {
    // A window may be there long before it is shown; what is in it, comes with a text.
    const auto* const widget = qobject_cast<const QWidget*>(watched);
    if (widget != nullptr && (event->type() == QEvent::Show ||
                              (event->type() == QEvent::Polish && !widget->isWindow()))) {
        qApp->removeEventFilter(this);
        isFontNeeded_ = true;
        useFont();
    }
    return QObject::eventFilter(watched, event);
}

void DesktopLook::useFont() const {
    for (const auto& [rank, text] : fonts_) {
        if (const QString family = installedFamily(text); !family.isEmpty()) {
            QFont font = QApplication::font();
            font.setFamily(family);
            QApplication::setFont(font);
            return;
        }
    }
}

void DesktopLook::takeIcons(const QString& theme, int rank) {
    if (rank >= iconsRank_ && useIconTheme(theme)) {
        iconsRank_ = rank;
    }
}

} // namespace tidewell
