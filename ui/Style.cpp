#include "ui/Style.h"

#include "ui/Drawing.h"
#include "ui/Palette.h"
#include "ui/Symbols.h"

#include <QBitmap>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>

namespace tidewell {

namespace {

constexpr double cornerRadius = 5;
constexpr int messageSymbolSize = 40;
constexpr int besideText = 6; // more than Fusion leaves

bool isDefault(const QStyleOption& option) {
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    return button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton) &&
           option.state.testFlag(QStyle::State_Enabled);
}

bool showsFocus(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_HasFocus) &&
           option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

/// What push buttons and pickers stand on.
void drawGround(QPainter& painter, const QStyleOption& option) {
    const QPalette& palette = option.palette;
    const Appearance appearance = appearanceOf(palette);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    const bool isDown = option.state.testFlag(QStyle::State_Sunken);
    const bool isUnderMouse = option.state.testFlag(QStyle::State_MouseOver);
    QColor ground = palette.color(isDefault(option) ? QPalette::Highlight : QPalette::Base);
    if (isEnabled && (isDown || isUnderMouse)) {
        const QColor shade = isDefault(option) ? QColor(Qt::black) : text;
        ground = onGround(withOpacity(shade, isDown ? 0.16 : 0.06), ground);
    }
    double strength = hasHighContrast(appearance) ? 1 : 0.3;
    strength = isEnabled ? strength : strength / 2;
    painter.save();
    const double line = 1 / painter.device()->devicePixelRatioF();
    drawSoftBox(painter, option.rect, cornerRadius, ground, withOpacity(text, strength), line);
    if (showsFocus(option)) {
        drawFocusRing(painter, option.rect, cornerRadius, appearance);
        // Told from the ground, which may have its colour.
        painter.setPen(palette.color(QPalette::Base));
        painter.drawRoundedRect(QRectF(option.rect).adjusted(2.5, 2.5, -2.5, -2.5),
                                cornerRadius - 2, cornerRadius - 2);
    }
    painter.restore();
}

/// Down, at the side where the picker ends.
void drawChevron(QPainter& painter, const QStyleOptionComplex& option) {
    constexpr double fromEnd = 13;
    const QRectF box(option.rect);
    const double x =
        option.direction == Qt::RightToLeft ? box.left() + fromEnd : box.right() - fromEnd;
    const QPointF middle(x, box.center().y());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(option.palette.color(QPalette::ButtonText), 1.5, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{-4, -2}, {0, 2}, {4, -2}}).translated(middle));
    painter.restore();
}

} // namespace

Style::Style()
    : QProxyStyle(QStringLiteral("fusion")) {}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        drawGround(*painter, *option);
        break;
    case PE_FrameFocusRect:
        if (showsFocus(*option) &&
            qstyleoption_cast<const QStyleOptionButton*>(option) == nullptr) {
            drawFocusRing(*painter, option->rect, cornerRadius - 1, appearanceOf(option->palette));
        }
        break;
    case PE_PanelTipLabel:
        drawSoftBox(
            *painter, option->rect, cornerRadius, option->palette.color(QPalette::ToolTipBase),
            hairline(appearanceOf(option->palette)), 1 / painter->device()->devicePixelRatioF());
        break;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
    if (element == CE_PushButtonLabel && isDefault(*option)) {
        QStyleOptionButton lit(*qstyleoption_cast<const QStyleOptionButton*>(option));
        lit.palette.setColor(QPalette::ButtonText, lit.palette.color(QPalette::HighlightedText));
        QProxyStyle::drawControl(element, &lit, painter, widget);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                               QPainter* painter, const QWidget* widget) const {
    if (control == CC_ComboBox) {
        drawGround(*painter, *option);
        drawChevron(*painter, *option);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                              const QWidget* widget) const {
    const QSize usual = QProxyStyle::sizeFromContents(type, option, contents, widget);
    return type == CT_PushButton ? usual + QSize(2 * besideText, 0) : usual;
}

QIcon Style::standardIcon(StandardPixmap icon, const QStyleOption* option,
                          const QWidget* widget) const {
    if (widget == nullptr || (icon != SP_MessageBoxWarning && icon != SP_MessageBoxInformation)) {
        return QProxyStyle::standardIcon(icon, option, widget);
    }
    const bool isWarning = icon == SP_MessageBoxWarning;
    const QColor colour = barColour(isWarning ? colours::systemOrange : colours::systemBlue,
                                    appearanceOf(widget->palette()));
    const auto image = symbolImage(isWarning ? "exclamationmark.triangle" : "info.circle",
                                   colour.rgb(), messageSymbolSize, widget->devicePixelRatioF());
    return image ? QIcon(QPixmap::fromImage(*image)) : QIcon();
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* result) const {
    auto* const mask = qstyleoption_cast<QStyleHintReturnMask*>(result);
    if (hint == SH_ToolTip_Mask && option != nullptr && mask != nullptr) {
        QBitmap shape(option->rect.size());
        shape.clear();
        QPainter painter(&shape);
        painter.setBrush(Qt::color1);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(option->rect, cornerRadius, cornerRadius);
        painter.end();
        mask->region = shape;
        return 1;
    }
    return QProxyStyle::styleHint(hint, option, widget, result);
}

} // namespace tidewell
