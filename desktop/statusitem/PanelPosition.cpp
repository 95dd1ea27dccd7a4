#include "desktop/statusitem/PanelPosition.h"

#include "ui/Geometry.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <array>

namespace tidewell {

namespace {

// From the item, and from the edges of the available area.
constexpr int gap = 4;
// How far a bar's edge may be from a click in it, where the desktop does not tell of its bars.
constexpr int clickMargin = 16;

enum class Edge { top, bottom, left, right };

// Rectangles' ends as coordinates of the first point outside, unlike the toolkit's own.
int endOfX(const QRect& rectangle) {
    return rectangle.x() + rectangle.width();
}
int endOfY(const QRect& rectangle) {
    return rectangle.y() + rectangle.height();
}

/// The edge of the screen with the broadest bar; the top without any.
Edge barEdge(const QRect& screen, const QRect& available) {
    const std::array widths{std::pair(available.y() - screen.y(), Edge::top),
                            std::pair(endOfY(screen) - endOfY(available), Edge::bottom),
                            std::pair(available.x() - screen.x(), Edge::left),
                            std::pair(endOfX(screen) - endOfX(available), Edge::right)};
    return std::ranges::max_element(widths, {}, &std::pair<int, Edge>::first)->second;
}

/// Which edge of the screen the bar is at in which `place` lies: that of the bar, or for a bar that
/// the desktop does not tell of, the nearer one of top and bottom.
Edge edgeBeside(const QRect& place, const QRect& screen, const QRect& available) {
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
    return centre.y() < screen.center().y() ? Edge::top : Edge::bottom;
}

/// What a click stands for where the item's place is not known.
QRect around(const QPoint& click, const QRect& available) {
    const int margin = available.contains(click) ? clickMargin : 0;
    return QRect(click, QSize(1, 1)).adjusted(-margin, -margin, margin, margin);
}

QRect inside(const QRect& available, QPoint wanted, const QSize& panel) {
    // The margin is given up where the panel does not fit with it.
    const int marginX = panel.width() + 2 * gap <= available.width() ? gap : 0;
    const int marginY = panel.height() + 2 * gap <= available.height() ? gap : 0;
    return movedInto(available.marginsRemoved({marginX, marginY, marginX, marginY}),
                     QRect(wanted, panel))
        .toRect();
}

} // namespace

QRect panelPosition(const StatusItemActivation& activation, const QRect& screen,
                    const QRect& available, const QSize& wanted) {
    const QSize panel = wanted.boundedTo(available.size());
    const QPoint far(endOfX(available), endOfY(available));
    if (!activation.item && !activation.click) {
        switch (barEdge(screen, available)) {
        case Edge::top:
            return inside(available, {far.x(), available.y()}, panel);
        case Edge::left:
            return inside(available, {available.x(), far.y()}, panel);
        case Edge::bottom:
        case Edge::right:
            break;
        }
        return inside(available, far, panel);
    }
    const QRect place = activation.item ? *activation.item : around(*activation.click, available);
    const QPoint centred(place.center().x() - panel.width() / 2,
                         place.center().y() - panel.height() / 2);
    switch (edgeBeside(place, screen, available)) {
    case Edge::top:
        return inside(available, {centred.x(), endOfY(place) + gap}, panel);
    case Edge::bottom:
        return inside(available, {centred.x(), place.y() - gap - panel.height()}, panel);
    case Edge::left:
        return inside(available, {endOfX(place) + gap, centred.y()}, panel);
    case Edge::right:
        break;
    }
    return inside(available, {place.x() - gap - panel.width(), centred.y()}, panel);
}

QRect panelPosition(const StatusItemActivation& activation, const QSize& panel) {
    const auto place =
        activation.item ? std::optional(activation.item->center()) : activation.click;
    const QScreen* screen = place ? QGuiApplication::screenAt(*place) : nullptr;
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    return screen == nullptr
               ? QRect(QPoint(), panel)
               : panelPosition(activation, screen->geometry(), screen->availableGeometry(), panel);
}

} // namespace tidewell
