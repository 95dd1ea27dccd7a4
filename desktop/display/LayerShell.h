#pragma once

#include <QMargins>
#include <QRect>

class QWidget;
class QWindow;

/// Wayland's way to put windows at an edge of the screen, above others and beside the bars, which
/// compositors other than GNOME's have. Built in where there is layer-shell-qt. Main thread.
namespace tidewell::layershell {

/// Whether the compositor has it, and this build uses it. Asked once, for a second at most. Works
/// before the application object is made.
bool isOffered();

/// Whether the program's windows can be put there: it is offered, and Qt's platform is Wayland.
bool isUsed();

enum class Layer {
    bars,      ///< below full-screen windows; never with the keyboard
    aboveBars, ///< above everything; with the keyboard when it is shown or clicked on
};

/// The two edges of a screen that a window is nearest to, and how far it lies from them.
struct Anchors {
    Qt::Edges edges;
    QMargins margins;

    bool operator==(const Anchors&) const = default;
};

/// Pure.
Anchors anchors(const QRect& window, const QRect& screen);

// To be called only where the layer shell is used, before each showing. A window that is open when
// its screen goes is to be hidden and shown anew.

/// Gives a window, not shown yet or open, its geometry, on the screen of its middle. The compositor
/// counts from the bars, where there are some at the nearest edges.
void putAtEdge(QWidget& window, const QRect& place, Layer layer);

/// Spreads a window over all of its screen, bars included, below those of ours that are shown
/// later.
void coverScreen(QWindow& window);

} // namespace tidewell::layershell
