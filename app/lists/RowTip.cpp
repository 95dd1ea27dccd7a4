#include "app/lists/RowTip.h"

#include "desktop/appearance/RoundedBackground.h"
#include "ui/Fonts.h"
#include "ui/Geometry.h"

#include <QScreen>

namespace tidewell {

namespace {

constexpr double cornerRadius = 6;
constexpr int textWidth = 320;
constexpr QPoint belowPointer{12, 20};

} // namespace

RowTip::RowTip(QWidget* parent)
    : QLabel(parent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput) {
    setAttribute(Qt::WA_WindowPropagation);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setTextFormat(Qt::PlainText);
    setFont(textFont(TextStyle::callout, font()));
    setWordWrap(true);
    setContentsMargins(10, 8, 10, 8);
    useRoundedBackground(*this, cornerRadius);
}

void RowTip::showText(const QString& text, QPoint position) {
    QString breakable = text;
    setText(breakable.replace(u'/', QStringLiteral("/\u200b"))); // paths are long words
    const QMargins margins = contentsMargins();
    const QRect lines =
        fontMetrics().boundingRect(QRect(0, 0, textWidth, 10000), Qt::TextWordWrap, this->text());
    setFixedWidth(lines.width() + margins.left() + margins.right() + 4);
    setFixedHeight(heightForWidth(width()));
    if (const QScreen* const on = parentWidget()->screen()) {
        const QRectF place(position + belowPointer, size());
        move(movedInto(on->availableGeometry(), place).topLeft().toPoint());
    }
    show();
}

} // namespace tidewell
