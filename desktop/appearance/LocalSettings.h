#pragma once

#include "base/observable/ObserverList.h"
#include "base/values/Colour.h"
#include "desktop/display/SelectionOwner.h"

#include <QFileSystemWatcher>
#include <QString>

#include <optional>

namespace tidewell {

/// By a GTK theme's name: "Greybird-dark" is dark; "Greybird" is light, and so is "Arc-Darker",
/// which has dark title bars only. "HighContrast" and "HighContrastInverse" are what they say.
/// Empty for no name. Pure.
std::optional<Appearance> themeAppearance(const QString& name);

/// What a desktop says of its look, as far as it does.
struct LookSettings {
    std::optional<Appearance> appearance = std::nullopt;
    QString font; ///< as Qt ("Noto Sans,10,-1") or Pango ("Noto Sans Bold 10") writes it
    QString iconTheme;
    std::optional<bool> animations = std::nullopt;
};

/// What is known of the desktop's look without asking the bus. First what LXQt's own file says, on
/// LXQt; then XSETTINGS, which most desktops on X11 have; both are followed live. Last GTK's
/// settings file as it was at the start, for window managers without a desktop. Main thread.
class LocalSettings final {
public:
    /// `desktops` is the value of XDG_CURRENT_DESKTOP. After the application object.
    explicit LocalSettings(const QString& desktops);

    const LookSettings& look() const { return look_; }

    /// Calls `observer` after changes.
    Subscription didChange(std::function<void()> observer) {
        return observers_.add(std::move(observer));
    }

private:
    void read();
    LookSettings xsettings() const;

    bool isLxqt_;
    SelectionOwner owner_{"_XSETTINGS_S", "_XSETTINGS_SETTINGS", [this] { read(); }};
    QFileSystemWatcher lxqtFolder_;
    LookSettings gtk_;
    LookSettings look_;
    ObserverList<> observers_;
};

} // namespace tidewell
