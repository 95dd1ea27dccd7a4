#pragma once

#include <QString>

#include <array>

namespace tidewell {

/// The windows that the panel opens.
enum class SceneIdentifier { about, settings, appMemory };

enum class TitleBar { standard, hidden };
enum class Placement {
    centred,   ///< in the middle of the screen when it opens
    ownChoice, ///< the content places its window itself
};

/// One single-instance window of the program, as data. It cannot be resized by the user.
struct WindowScene {
    SceneIdentifier identifier;
    const char* objectName; ///< the identifier's text
    QString title;
    int width;  ///< points
    int height; ///< points; 0 for as low as its content
    TitleBar titleBar;
    Placement placement;
};

/// The main panel, framed in points. It has no identifier: only the status item opens it.
inline constexpr int panelWidth = 350;
inline constexpr int panelHeight = 760;

/// Of the windows that have no frame of the desktop's, the panel included; points.
inline constexpr double windowCornerRadius = 10;

/// The scenes in the order of their identifiers, with titles in the user's language.
std::array<WindowScene, 3> windowScenes(const QString& applicationName);

} // namespace tidewell
