#include "platform/ui/TitledBox.h"

#include "platform/ui/Fonts.h"
#include "platform/ui/Palette.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace tidewell {

namespace {

constexpr double cornerRadius = 8;

QAccessibleInterface* makeAccessibleBox(const QString&, QObject* object) {
    auto* const box = dynamic_cast<TitledBox*>(object);
    return box == nullptr ? nullptr : new QAccessibleWidget(box, QAccessible::Grouping);
}

} // namespace

TitledBox::TitledBox(const QString& title, QWidget* content, QWidget* parent)
    : QWidget(parent)
    , title_(new QLabel)
    , inside_(new QVBoxLayout) {
    QAccessible::installFactory(makeAccessibleBox); // does nothing the second time
    title_->setFont(textFont(TextStyle::headline));
    title_->setFixedHeight(titleHeight);
    title_->setContentsMargins(2, 0, 2, 1);
    content->setBackgroundRole(QPalette::Base);
    inside_->addWidget(content);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(title_);
    layout->addLayout(inside_, 1);
    setTitle(title);
    setContentMargins({4, 4, 4, 4});
}

void TitledBox::setTitle(const QString& title) {
    title_->setText(title);
    setAccessibleName(title);
}

void TitledBox::setContentMargins(QMargins margins) {
    inside_->setContentsMargins(margins);
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
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = 1 / devicePixelRatioF(); // one pixel of the device
    const QRectF box = QRectF(rect())
                           .adjusted(0, titleHeight, 0, 0)
                           .adjusted(line / 2, line / 2, -line / 2, -line / 2);
    painter.setBrush(palette().base());
    painter.setPen(QPen(hairline(appearanceOf(palette())), line));
    painter.drawRoundedRect(box, cornerRadius, cornerRadius);
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
