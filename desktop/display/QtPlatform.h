#pragma once

#include <QByteArray>

namespace tidewell {

/// What windows can be shown on.
struct Displays {
    bool x11 = false;        ///< `DISPLAY` is set
    bool layerShell = false; ///< Wayland's windows can be put at an edge of the screen
    QByteArray wanted;       ///< by the user, in `QT_QPA_PLATFORM`
};

/// The value of `QT_QPA_PLATFORM` that brings the panel beside the status item. An ordinary window
/// of Wayland cannot place itself, but one of the layer shell, which is sharper than XWayland at
/// fractional scales. Null where the choice is Qt's. Pure.
QByteArray qtPlatform(const Displays& displays);

} // namespace tidewell
