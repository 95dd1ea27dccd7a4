#include "ui/SymbolView.h"

#include "ui/Palette.h"

#include <QPainter>

namespace tidewell {

SymbolView::SymbolView(std::string_view symbol, Colour colour, int size)
    : symbol_(symbol, size)
    , colour_(colour) {
    setFixedSize(size, size);
}

void SymbolView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    symbol_.draw(painter, toQColor(colour_, appearanceOf(palette())), QRectF(rect()).center());
}

} // namespace tidewell
