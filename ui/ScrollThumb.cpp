#include "ui/ScrollThumb.h"

#include "ui/Palette.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace tidewell {

QSize ScrollThumb::sizeHint() const {
    return {thickness, QScrollBar::sizeHint().height()};
}

void ScrollThumb::paintEvent(QPaintEvent*) {
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRectF thumb =
        style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        withOpacity(palette().color(QPalette::PlaceholderText), isSliderDown() ? 1 : 0.7));
    painter.drawRoundedRect(QRectF(2, thumb.top(), 6, thumb.height()), 3, 3);
}

ThumbScrollArea::ThumbScrollArea(QWidget* content) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(new ScrollThumb); // the area's own from now on
    setWidgetResizable(true);
    setWidget(content);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this](int, int highest) {
        setViewportMargins(0, 0, highest > 0 ? -ScrollThumb::thickness : 0, 0);
    });
}

} // namespace tidewell
