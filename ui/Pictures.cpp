#include "ui/Pictures.h"

#include "ui/Accessible.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <initializer_list>

namespace tidewell {

namespace {

// Both pictures are drawn in a square of 128 units, the icon with the coordinates of its SVG file:
// an SVG renderer would stay in memory.
constexpr double units = 128;

QLinearGradient vertical(double top, double bottom,
                         std::initializer_list<std::pair<double, QRgb>> stops) {
    QLinearGradient gradient(0, top, 0, bottom);
    for (const auto& [position, colour] : stops) {
        gradient.setColorAt(position, QColor::fromRgb(colour));
    }
    return gradient;
}

/// Water below a surface that runs through two waves from edge to edge: a cubic curve each half,
/// the second the continuation of the first.
QPainterPath water(QPointF start, QPointF crest, QPointF slope, QPointF middle, QPointF trough,
                   QPointF end) {
    QPainterPath path(start);
    path.cubicTo(crest, slope, middle);
    path.cubicTo(2 * middle - slope, trough, end);
    path.lineTo(end.x(), units);
    path.lineTo(start.x(), units);
    return path;
}

void prepare(QPainter& painter, const QRectF& square) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / units, square.height() / units);
    painter.setPen(Qt::NoPen);
}

} // namespace

void drawApplicationIcon(QPainter& painter, const QRectF& square) {
    painter.save();
    prepare(painter, square);
    QPainterPath shape;
    shape.addRoundedRect(8, 8, 112, 112, 28, 28);
    const QPainterPath far = water({8, 66}, {28, 50}, {44, 52}, {64, 62}, {102, 80}, {120, 66});
    const QPainterPath near = water({8, 80}, {28, 92}, {44, 92}, {64, 84}, {104, 68}, {120, 78});

    painter.fillPath(shape, vertical(8, 80, {{0, 0x4a9ff0}, {1, 0x9fd6fa}}));
    painter.fillPath(shape & far, vertical(56, 120, {{0, 0x2fb4ee}, {1, 0x1688d8}}));
    painter.setPen(QPen(Qt::white, 11));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QPointF(64, 62), 30, 30);
    painter.setPen(Qt::NoPen);
    painter.fillPath(shape & near, vertical(72, 120, {{0, 0x0a78f0}, {1, 0x0048b0}}));
    painter.setBrush(QColor::fromRgb(0x06387a));
    painter.drawEllipse(QPointF(87, 43), 10, 10);
    painter.restore();
}

QIcon applicationIcon() {
    // Made once: QPixmapCache keeps the pixels that each icon was ever drawn with.
    QIcon icon = QGuiApplication::windowIcon();
    if (!icon.isNull()) {
        return icon;
    }
    for (const int size : {16, 32, 64}) {
        QPixmap picture(size, size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawApplicationIcon(painter, picture.rect());
        icon.addPixmap(picture);
    }
    QGuiApplication::setWindowIcon(icon);
    return icon;
}

void drawNoWarning(QPainter& painter, const QRectF& square) {
    painter.save();
    prepare(painter, square);
    QPainterPath shape;
    shape.addEllipse(QPointF(64, 64), 56, 56);
    const QPainterPath far = water({4, 84}, {26, 76}, {42, 76}, {64, 84}, {104, 92}, {124, 84});
    const QPainterPath near = water({4, 98}, {26, 106}, {42, 106}, {64, 98}, {104, 90}, {124, 98});

    painter.fillPath(shape, vertical(8, 120, {{0, 0x8fe3c0}, {1, 0x3cc0a8}}));
    painter.fillPath(shape & far, vertical(76, 120, {{0, 0x30b0c7}, {1, 0x2490d0}}));
    painter.fillPath(shape & near, vertical(90, 120, {{0, 0x1f86e0}, {1, 0x0a62c8}}));
    painter.setPen(QPen(Qt::white, 9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{44, 50}, {58, 64}, {86, 34}}));
    painter.restore();
}

PictureView::PictureView(DrawPicture draw)
    : draw_(draw) {
    makeAccessible<PictureView, AccessibleAs<QAccessible::Graphic>>();
}

void PictureView::paintEvent(QPaintEvent*) {
    const double side = std::min(width(), height());
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(rect()).center());
    QPainter painter(this);
    draw_(painter, square);
}

} // namespace tidewell
