#pragma once

#include "base/ports/StoredPreference.h"
#include "desktop/statusitem/StatusItemPlace.h"

#include <string>

namespace tidewell {

/// The preference that has the place to which the user dragged the label window.
struct KeptLabelPosition {
    UserDefaults& defaults;
    StoredPreference<std::string> preference;
};

/// What is stored of a place that the user gave the label window: its upper left corner, and the
/// screen that it is on. Pure.
std::string storedLabelPosition(const QRect& label, const std::vector<ScreenArea>& screens);

/// Where the label window lies: where the user put it, as long as there is a screen of the same
/// geometry, else at the right of the first screen, below the buttons that a maximised window has
/// in its corner. All of it lies in what bars leave of the screen. Pure.
QPoint labelPosition(const std::string& stored, const std::vector<ScreenArea>& screens,
                     const QSize& label);

} // namespace tidewell
