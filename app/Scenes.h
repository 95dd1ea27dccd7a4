#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tidewell {

enum class TitleBar { standard, hidden };
enum class Placement {
    centred,   ///< in the middle of the screen when it opens
    ownChoice, ///< the content places its window itself
};

/// One single-instance window of the program, as data. It is as large as its content and cannot be
/// resized.
struct WindowScene {
    std::string_view identifier; ///< also the window's object name
    std::string title;
    int width;  ///< points
    int height; ///< points
    TitleBar titleBar;
    Placement placement;
};

/// The main panel, framed in points. It has no identifier: only the status item opens it.
inline constexpr int panelWidth = 350;
inline constexpr int panelHeight = 760;

/// Of the windows that have no frame of the desktop's, the panel included; points.
inline constexpr double windowCornerRadius = 10;

/// The windows that the panel opens, in their order, with titles in the user's language.
std::array<WindowScene, 3> windowScenes(const std::string& applicationName);

} // namespace tidewell
