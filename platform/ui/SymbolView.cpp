#include "platform/ui/SymbolView.h"

#include "platform/ui/Palette.h"
#include "platform/ui/Symbols.h"

#include <QPainter>

namespace tidewell {

SymbolView::SymbolView(std::string_view symbol, Colour colour, int size, QWidget* parent)
    : QWidget(parent)
    , symbol_(symbol)
    , colour_(colour) {
    setFixedSize(size, size);
}

void SymbolView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawSymbol(painter, symbol_, toQColor(colour_, appearanceOf(palette())),
               QRectF(rect()).center(), width());
}

} // namespace tidewell
