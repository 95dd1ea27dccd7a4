#include "app/processes/AppMemoryPlacement.h"

#include "app/panel/AnchorPoint.h"
#include "ui/Geometry.h"

#include <QLineF>

#include <algorithm>

namespace tidewell {

namespace {

constexpr double besidePanel = 24;
constexpr double abovePanelBottom = 129;

QRectF screenNearest(QPointF point, const QList<QRect>& screens) {
    return *std::ranges::min_element(screens, {}, [point](const QRect& screen) {
        return QLineF(movedInto(screen, QRectF(point, QSizeF())).topLeft(), point).length();
    });
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
    if (std::ranges::any_of(
            screens, [&described](const QRectF& screen) { return screen.contains(described); })) {
        return described.topLeft().toPoint();
    }
    const QPointF panel = desktopFromUpward(anchor, mainScreen);
    const QRectF screen = screenNearest(panel, screens);
    for (const double left : {described.left(), panel.x() + panelWidth + besidePanel}) {
        const QRectF place =
            movedInto(screen, QRectF(QPointF(left, described.top()), described.size()));
        if (place.left() == left) {
            return place.topLeft().toPoint();
        }
    }
    return movedInto(screen, described).topLeft().toPoint();
}

} // namespace tidewell
