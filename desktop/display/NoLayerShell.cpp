#include "desktop/display/LayerShell.h"

namespace tidewell::layershell {

bool isOffered() {
    return false;
}

bool isUsed() {
    return false;
}

void putAtEdge(QWidget&, const QRect&, Layer) {}

void coverScreen(QWindow&) {}

} // namespace tidewell::layershell
