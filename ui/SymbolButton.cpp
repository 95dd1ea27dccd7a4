#include "ui/SymbolButton.h"

#include "ui/Drawing.h"
#include "ui/Palette.h"
#include "ui/PushButton.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVariantAnimation>

namespace tidewell {

namespace {

constexpr double cornerRadius = 5;

} // namespace

SymbolButton::SymbolButton(std::string_view symbol, const QString& name, int symbolSize)
    : symbol_(symbol, symbolSize) {
    setAccessibleName(name);
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(symbolSize + 6, symbolSize + 4);
}

void SymbolButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Appearance appearance = appearanceOf(palette());
    const QColor text = palette().color(QPalette::Active, QPalette::ButtonText);
    if (isEnabled() && (isDown() || underMouse())) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(withOpacity(text, isDown() ? 0.16 : 0.08));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), cornerRadius, cornerRadius);
    }
    if (showsFocus(*this)) {
        drawFocusRing(painter, rect(), cornerRadius, appearance);
    }
    painter.setOpacity(isEnabled() ? 1 : 0.4);
    const QColor colour = isDown() ? text : toQColor(colours::secondaryText, appearance);
    symbol_.draw(painter, colour, QRectF(rect()).center() - QPointF(0, height_));
}

void SymbolButton::enterEvent(QEnterEvent* event) {
    update();
    QAbstractButton::enterEvent(event);
}

void SymbolButton::leaveEvent(QEvent* event) {
    update();
    QAbstractButton::leaveEvent(event);
}

void SymbolButton::keyPressEvent(QKeyEvent* event) {
    if (!pressByReturn(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

void SymbolButton::bounce() {
    if (jump_ == nullptr) {
        jump_ = new QVariantAnimation(this);
        jump_->setDuration(400);
        jump_->setStartValue(0.0);
        jump_->setKeyValueAt(0.3, 4.0);
        jump_->setKeyValueAt(0.6, 0.0);
        jump_->setKeyValueAt(0.8, 1.0);
        jump_->setEndValue(0.0);
        connect(jump_, &QVariantAnimation::valueChanged, this, [this](const QVariant& height) {
            height_ = height.toDouble();
            update();
        });
    }
    jump_->stop();
    jump_->start();
}

} // namespace tidewell
