#include "desktop/display/QtPlatform.h"

namespace tidewell {

QByteArray qtPlatform(const Displays& displays) {
    if (!displays.wanted.isEmpty()) {
        return displays.wanted;
    }
    if (displays.layerShell) {
        return displays.x11 ? "wayland;xcb" : "wayland"; // the first whose plug-in is there
    }
    return displays.x11 ? QByteArray("xcb;wayland") : QByteArray();
}

} // namespace tidewell
