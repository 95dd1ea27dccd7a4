#include "app/panel/PanelRules.h"

#include "ui/Palette.h"

namespace tidewell {

std::vector<Colour> gaugeGradient(double value) {
    using namespace colours;
    if (value > 80) {
        return {systemBlue, systemOrange, systemRed};
    }
    if (value > 60) {
        return {systemTeal, systemBlue, systemOrange};
    }
    if (value > 40) {
        return {systemTeal, systemBlue};
    }
    if (value > 20) {
        return {systemGreen, systemTeal};
    }
    return {systemGreen};
}

} // namespace tidewell
