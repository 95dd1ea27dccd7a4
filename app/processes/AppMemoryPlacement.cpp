#include "app/processes/AppMemoryPlacement.h"

#include "app/panel/AnchorPoint.h"
#include "ui/Geometry.h"

#include <QLineF>

#include <algorithm>

namespace tidewell {

namespace {

constexpr double besidePanel = 24;
constexpr double abovePanelBottom = 129;

QPointF nearestWhole(const QRectF& window, const QList<QRect>& screens) {
    QPointF nearest = movedInto(screens.first(), window).topLeft();
    for (const QRect& screen : screens) {
        const QPointF place = movedInto(screen, window).topLeft();
        if (QLineF(window.topLeft(), place).length() < QLineF(window.topLeft(), nearest).length()) {
            nearest = place;
        }
    }
    return nearest;
}

} // namespace

QPointF appMemoryOrigin(QPointF anchor, double windowWidth) {
    return {anchor.x() - windowWidth - besidePanel, anchor.y() + abovePanelBottom};
}

QPoint appMemoryPosition(QPointF anchor, const QSize& window, double panelWidth,
                         const QList<QRect>& screens) {
    if (screens.isEmpty()) {
        return {}; // the last one was unplugged
    }
    const QRect& mainScreen = screens.first();
    const QPointF bottomLeft =
        desktopFromUpward(appMemoryOrigin(anchor, window.width()), mainScreen);
    const QRectF described(bottomLeft - QPointF(0, window.height()), QSizeF(window));
    const bool isVisible = std::ranges::any_of(
        screens, [&described](const QRect& screen) { return described.intersects(screen); });
    if (isVisible) {
        return described.topLeft().toPoint();
    }
    const double panelLeft = desktopFromUpward(anchor, mainScreen).x();
    const double panelRight = panelLeft + panelWidth;
    QRectF otherSide = described;
    otherSide.moveLeft(panelRight + besidePanel);
    const auto covered = [&](QPointF place) {
        return std::max(0.0, std::min(place.x() + window.width(), panelRight) -
                                 std::max(place.x(), panelLeft));
    };
    const QPointF there = nearestWhole(otherSide, screens);
    const QPointF here = nearestWhole(described, screens);
    return (covered(there) <= covered(here) ? there : here).toPoint();
}

} // namespace tidewell
