#include "desktop/statusitem/PanelPosition.h"

#include "ui/Geometry.h"

#include <algorithm>
#include <array>

namespace tidewell {

namespace {

// From the item, and from the edges of the available area.
constexpr int gap = 4;

enum class Edge { top, bottom, left, right };

// The first coordinate outside, unlike QRect::right() and bottom().
int endOfX(const QRect& rectangle) {
    return rectangle.x() + rectangle.width();
}
int endOfY(const QRect& rectangle) {
    return rectangle.y() + rectangle.height();
}

/// The screen edge with the broadest bar; the top without any.
Edge barEdge(const QRect& screen, const QRect& available) {
    const std::array widths{std::pair(available.y() - screen.y(), Edge::top),
                            std::pair(endOfY(screen) - endOfY(available), Edge::bottom),
                            std::pair(available.x() - screen.x(), Edge::left),
                            std::pair(endOfX(screen) - endOfX(available), Edge::right)};
    return std::ranges::max_element(widths, {}, &std::pair<int, Edge>::first)->second;
}

/// The screen edge of the bar that `place` lies in. Where the available area excludes no bar there,
/// the nearer of top and bottom, or of left and right where the panel fits only beside the place.
Edge edgeBeside(const QRect& place, const QRect& screen, const QRect& available,
                const QSize& panel) {
    const QPoint centre = place.center();
    if (centre.y() < available.y()) {
        return Edge::top;
    }
    if (centre.y() >= endOfY(available)) {
        return Edge::bottom;
    }
    if (centre.x() < available.x()) {
        return Edge::left;
    }
    if (centre.x() >= endOfX(available)) {
        return Edge::right;
    }
    const bool isHigh = centre.y() < screen.center().y();
    const bool isLeft = centre.x() < screen.center().x();
    const int room = isHigh ? endOfY(available) - endOfY(place) : place.y() - available.y();
    const int beside = isLeft ? endOfX(available) - endOfX(place) : place.x() - available.x();
    if (room < panel.height() + gap && beside >= panel.width() + gap) {
        return isLeft ? Edge::left : Edge::right;
    }
    return isHigh ? Edge::top : Edge::bottom;
}

QRect inside(const QRect& available, QPoint wanted, const QSize& panel) {
    // The margin is given up where the panel does not fit with it.
    const int marginX = panel.width() + 2 * gap <= available.width() ? gap : 0;
    const int marginY = panel.height() + 2 * gap <= available.height() ? gap : 0;
    return movedInto(available.marginsRemoved({marginX, marginY, marginX, marginY}),
                     QRect(wanted, panel))
        .toRect();
}

/// The screen of the item; without it that of a bar, and the primary one without a bar.
const ScreenArea& screenOf(const std::optional<QRect>& item,
                           const std::vector<ScreenArea>& screens) {
    const auto found = std::ranges::find_if(screens, [&item](const ScreenArea& screen) {
        return item ? screen.geometry.contains(item->center())
                    : screen.geometry != screen.available;
    });
    return found == screens.end() ? screens.front() : *found;
}

/// The corner of the available area at which status items usually are in the bar.
QPoint itemCorner(const ScreenArea& screen) {
    const QRect& area = screen.available;
    switch (barEdge(screen.geometry, area)) {
    case Edge::top:
        return {endOfX(area), area.y()};
    case Edge::left:
        return {area.x(), endOfY(area)};
    case Edge::bottom:
    case Edge::right:
        break;
    }
    return {endOfX(area), endOfY(area)};
}

} // namespace

QRect panelPosition(const std::optional<QRect>& item, const std::vector<ScreenArea>& screens,
                    const QSize& wanted) {
    if (screens.empty()) {
        return {QPoint(), wanted};
    }
    const ScreenArea& screen = screenOf(item, screens);
    const QRect& available = screen.available;
    const QSize panel = wanted.boundedTo(available.size());
    if (!item) {
        return inside(available, itemCorner(screen), panel);
    }
    const QPoint centred(item->center().x() - panel.width() / 2,
                         item->center().y() - panel.height() / 2);
    switch (edgeBeside(*item, screen.geometry, available, panel)) {
    case Edge::top:
        return inside(available, {centred.x(), endOfY(*item) + gap}, panel);
    case Edge::bottom:
        return inside(available, {centred.x(), item->y() - gap - panel.height()}, panel);
    case Edge::left:
        return inside(available, {endOfX(*item) + gap, centred.y()}, panel);
    case Edge::right:
        break;
    }
    return inside(available, {item->x() - gap - panel.width(), centred.y()}, panel);
}

} // namespace tidewell
