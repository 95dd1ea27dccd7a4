#include "desktop/display/LayerShell.h"

namespace tidewell::layershell {

Anchors anchors(const QRect& window, const QRect& screen) {
    const QMargins apart(window.left() - screen.left(), window.top() - screen.top(),
                         screen.right() - window.right(), screen.bottom() - window.bottom());
    const bool isLeft = apart.left() < apart.right();
    const bool isTop = apart.top() <= apart.bottom();
    return {.edges =
                (isLeft ? Qt::LeftEdge : Qt::RightEdge) | (isTop ? Qt::TopEdge : Qt::BottomEdge),
            .margins = {isLeft ? apart.left() : 0, isTop ? apart.top() : 0,
                        isLeft ? 0 : apart.right(), isTop ? 0 : apart.bottom()}};
}

} // namespace tidewell::layershell
