#include "ui/TitledBox.h"

#include "ui/Accessible.h"
#include "ui/Drawing.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace tidewell {

namespace {

constexpr double cornerRadius = 8;
constexpr int titleInset = 2;

} // namespace

TitledBox::TitledBox(const QString& title, QWidget* content, QWidget* parent)
    : QWidget(parent)
    , inside_(new QVBoxLayout(this)) {
    makeAccessible<TitledBox, AccessibleAs<QAccessible::Grouping>>();
    content->setBackgroundRole(QPalette::Base);
    inside_->addWidget(content);

    setTitle(title);
    setContentMargins({4, 4, 4, 4});
}

void TitledBox::setTitle(const QString& title) {
    if (title != accessibleName()) {
        setAccessibleName(title);
        update();
    }
}

void TitledBox::setNote(const QString& note) {
    if (std::exchange(note_, note) != note) {
        setAccessibleDescription(note);
        update(0, 0, width(), titleHeight);
    }
}

void TitledBox::paintInside(QPainter& painter, const QWidget& content,
                            const std::function<void()>& paint) {
    const QWidget* box = content.parentWidget();
    while (box != nullptr && dynamic_cast<const TitledBox*>(box) == nullptr) {
        box = box->parentWidget();
    }
    if (box == nullptr) {
        paint();
        return;
    }
    const double line = 1 / content.devicePixelRatioF();
    const QRectF frame = QRectF(box->rect())
                             .adjusted(0, titleHeight, 0, 0)
                             .translated(-QPointF(content.mapTo(box, QPoint())));
    painter.save();
    painter.setClipRect(frame.adjusted(line, line, -line, -line));
    paint();
    painter.restore();
    painter.save();
    const QColor edge = hairline(appearanceOf(box->palette()));
    for (const double x : {frame.left(), frame.right() - line}) {
        painter.fillRect(
            QRectF(x, frame.top() + cornerRadius, line, frame.height() - 2 * cornerRadius),
            onGround(edge, box->palette().base().color()));
    }
    // The corners are painted over: under a clip path, Qt's raster engine takes pool threads.
    const QSizeF size(2 * cornerRadius, 2 * cornerRadius);
    painter.setRenderHint(QPainter::Antialiasing);
    const std::array corners{std::pair{frame.topRight(), QPointF(1, 0)},
                             std::pair{frame.topLeft(), QPointF(0, 0)},
                             std::pair{frame.bottomLeft(), QPointF(0, 1)},
                             std::pair{frame.bottomRight(), QPointF(1, 1)}};
    for (int start = 0; const auto& [corner, side] : corners) {
        const QRectF circle(corner - QPointF(side.x() * size.width(), side.y() * size.height()),
                            size);
        QPainterPath outside(corner);
        outside.arcTo(circle, start, 90);
        outside.closeSubpath();
        painter.fillPath(outside, box->palette().window());
        painter.setPen(QPen(edge, line));
        const double middle = line / 2;
        painter.drawArc(circle.adjusted(middle, middle, -middle, -middle), start * 16, 90 * 16);
        start += 90;
    }
    painter.restore();
}

void TitledBox::setContentMargins(QMargins margins) {
    inside_->setContentsMargins(margins + QMargins(0, titleHeight, 0, 0));
}

void TitledBox::onHover(std::function<void(bool)> hovered) {
    hovered_ = std::move(hovered);
}

void TitledBox::setHovered(bool isHovered) {
    if (std::exchange(isHovered_, isHovered) != isHovered && hovered_) {
        hovered_(isHovered);
    }
}

void TitledBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // Where it begins is the layout's side, not that of the title's script.
    const QRectF line(titleInset, 0, width() - 2 * titleInset, titleHeight - 1);
    const auto draw = [&](TextStyle style, QPalette::ColorRole role, Qt::Alignment side,
                          const QString& text) {
        painter.setFont(textFont(style, font()));
        painter.setPen(palette().color(role));
        drawTextLine(painter, line, QStyle::visualAlignment(layoutDirection(), side), text,
                     QFontMetricsF(painter.font()).horizontalAdvance(text));
    };
    draw(TextStyle::headline, QPalette::WindowText, Qt::AlignLeft, accessibleName());
    draw(TextStyle::footnote, QPalette::PlaceholderText, Qt::AlignRight, note_);

    drawSoftBox(painter, QRectF(rect()).adjusted(0, titleHeight, 0, 0), cornerRadius,
                palette().base(), hairline(appearanceOf(palette())), 1 / devicePixelRatioF());
}

void TitledBox::enterEvent(QEnterEvent* event) {
    setHovered(true);
    QWidget::enterEvent(event);
}

void TitledBox::leaveEvent(QEvent* event) {
    setHovered(false);
    QWidget::leaveEvent(event);
}

void TitledBox::hideEvent(QHideEvent* event) {
    setHovered(false);
    QWidget::hideEvent(event);
}

} // namespace tidewell
