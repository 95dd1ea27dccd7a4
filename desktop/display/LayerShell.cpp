#include "desktop/display/LayerShell.h"

#include "desktop/display/WaylandCompositor.h"

#include <LayerShellQt/Window>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace tidewell::layershell {

namespace {

using namespace std::chrono_literals;
using Surface = LayerShellQt::Window;

Surface::Anchors surfaceAnchors(Qt::Edges edges) {
    Surface::Anchors found;
    found.setFlag(Surface::AnchorTop, edges.testFlag(Qt::TopEdge));
    found.setFlag(Surface::AnchorBottom, edges.testFlag(Qt::BottomEdge));
    found.setFlag(Surface::AnchorLeft, edges.testFlag(Qt::LeftEdge));
    found.setFlag(Surface::AnchorRight, edges.testFlag(Qt::RightEdge));
    return found;
}

Surface& surfaceOf(QWindow& window) {
    window.create();
    if (!window.isVisible()) {
        // Closing takes the native window away, and what was set for that one is no use any more.
        delete Surface::get(&window);
    }
    Surface& surface = *Surface::get(&window);
    surface.setCloseOnDismissed(false); // with its screen: who shows it sees to that
    return surface;
}

} // namespace

bool isOffered() {
    static const bool offered = compositorOffers("zwlr_layer_shell_v1", 1s);
    return offered;
}

bool isUsed() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) && isOffered();
}

void putAtEdge(QWidget& window, const QRect& place, Layer layer) {
    QScreen* screen = QGuiApplication::screenAt(place.center());
    screen = screen == nullptr ? window.screen() : screen;
    const bool moves = window.isVisible() && screen != window.screen();
    if (moves) {
        window.hide(); // a surface stays on its screen
    }
    window.setGeometry(place);
    window.setScreen(screen);
    window.winId(); // creates the handle
    const auto [edges, margins] = anchors(place, screen->geometry());
    const bool isAbove = layer == Layer::aboveBars;
    Surface& surface = surfaceOf(*window.windowHandle());
    surface.setLayer(isAbove ? Surface::LayerOverlay : Surface::LayerTop);
    surface.setAnchors(surfaceAnchors(edges));
    surface.setMargins(margins);
    surface.setKeyboardInteractivity(isAbove ? Surface::KeyboardInteractivityOnDemand
                                             : Surface::KeyboardInteractivityNone);
    if (moves) {
        window.show();
    }
    window.update(); // margins count from the next frame on
}

void coverScreen(QWindow& window) {
    constexpr int barsIncluded = -1;
    Surface& surface = surfaceOf(window);
    surface.setLayer(Surface::LayerTop);
    surface.setAnchors(surfaceAnchors(Qt::TopEdge | Qt::BottomEdge | Qt::LeftEdge | Qt::RightEdge));
    surface.setExclusiveZone(barsIncluded);
    surface.setKeyboardInteractivity(Surface::KeyboardInteractivityNone);
}

} // namespace tidewell::layershell
