#pragma once

#include "base/values/Colour.h"

#include <vector>

namespace tidewell {

/// The height of the panel's list of figures in points. The prompts above it take from it.
constexpr int listHeight(bool checkIfNotificationsAreAllowed, bool isUpdateAvailable) {
    return (checkIfNotificationsAreAllowed ? 165 : 205) - (isUpdateAvailable ? 40 : 0);
}

/// The space below the panel's title in points.
constexpr int titleBottomPadding(bool checkIfNotificationsAreAllowed) {
    return checkIfNotificationsAreAllowed ? 0 : 15;
}

/// The colours of a round gauge of a percentage, from its minimum to its maximum.
std::vector<Colour> gaugeGradient(double value);

} // namespace tidewell
