#include "desktop/statusitem/LabelPosition.h"

#include "ui/Geometry.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace tidewell {

namespace {

// Points.
constexpr int margin = 8;
constexpr int highestTitleBar = 48;

} // namespace

std::string storedLabelPosition(const QRect& label, const std::vector<ScreenArea>& screens) {
    const auto screen = std::ranges::find_if(screens, [&label](const ScreenArea& each) {
        return each.geometry.contains(label.center());
    });
    if (screen == screens.end()) {
        return {};
    }
    const QRect& area = screen->geometry;
    std::ostringstream text;
    for (const int number :
         {label.x(), label.y(), area.x(), area.y(), area.width(), area.height()}) {
        text << number << ' ';
    }
    return text.str();
}

QPoint labelPosition(const std::string& stored, const std::vector<ScreenArea>& screens,
                     const QSize& label) {
    if (screens.empty()) {
        return {};
    }
    const ScreenArea* screen = &screens.front();
    QPoint wanted(screen->available.x() + screen->available.width() - margin - label.width(),
                  screen->available.y() + highestTitleBar);
    std::istringstream text(stored);
    std::array<int, 6> numbers{};
    for (int& number : numbers) {
        text >> number;
    }
    const auto [x, y, screenX, screenY, width, height] = numbers;
    const auto same =
        std::ranges::find(screens, QRect(screenX, screenY, width, height), &ScreenArea::geometry);
    if (!text.fail() && same != screens.end()) {
        screen = &*same;
        wanted = {x, y};
    }
    return movedInto(screen->available, QRectF(wanted, label)).topLeft().toPoint();
}

} // namespace tidewell
