#include "ui/TitledBox.h"

#include "ui/Accessible.h"
#include "ui/Drawing.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"

#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

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
    painter.setFont(textFont(TextStyle::headline, font()));
    painter.setPen(palette().color(QPalette::WindowText));
    drawTextLine(painter, QRectF(titleInset, 0, width() - 2 * titleInset, titleHeight - 1),
                 QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft), accessibleName(),
                 QFontMetricsF(painter.font()).horizontalAdvance(accessibleName()));

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
