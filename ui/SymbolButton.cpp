#include "ui/SymbolButton.h"

#include "ui/Palette.h"

#include <QFocusEvent>
#include <QPainter>
#include <QVariantAnimation>

#include <utility>

namespace tidewell {

namespace {

constexpr double cornerRadius = 5;
constexpr double ringWidth = 2;

} // namespace

SymbolButton::SymbolButton(std::string_view symbol, const QString& name, int symbolSize,
                           QWidget* parent)
    : QAbstractButton(parent)
    , symbol_(symbol, symbolSize) {
    setAccessibleName(name);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SymbolButton::sizeHint() const {
    return {symbol_.size() + 6, symbol_.size() + 4};
}

void SymbolButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Appearance appearance = appearanceOf(palette());
    const QColor text = palette().color(QPalette::Active, QPalette::ButtonText);
    const QRectF ground =
        QRectF(rect()).adjusted(ringWidth / 2, ringWidth / 2, -ringWidth / 2, -ringWidth / 2);
    if (isEnabled() && (isDown() || underMouse())) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(withOpacity(text, isDown() ? 0.16 : 0.08));
        painter.drawRoundedRect(ground, cornerRadius, cornerRadius);
    }
    if (hasFocus() && showsRing_) {
        painter.setPen(QPen(toQColor(colours::accent, appearance), ringWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(ground, cornerRadius, cornerRadius);
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

void SymbolButton::focusInEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
        reason == Qt::ShortcutFocusReason) {
        showRing(true);
    }
    QAbstractButton::focusInEvent(event);
}

void SymbolButton::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::ActiveWindowFocusReason) { // else the focus comes back with it
        showRing(false);
    }
    QAbstractButton::focusOutEvent(event);
}

void SymbolButton::keyPressEvent(QKeyEvent* event) {
    showRing(true);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
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
        connect(jump_, &QVariantAnimation::valueChanged, this,
                [this](const QVariant& height) { setHeight(height.toDouble()); });
    }
    jump_->stop();
    jump_->start();
}

void SymbolButton::setHeight(double height) {
    if (std::exchange(height_, height) != height) {
        update();
    }
}

void SymbolButton::showRing(bool show) {
    if (std::exchange(showsRing_, show) != show) {
        update();
    }
}

} // namespace tidewell
