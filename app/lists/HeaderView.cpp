#include "app/lists/HeaderView.h"

#include "ui/Fonts.h"

#include <QPainter>
#include <QWidget>

namespace tidewell {

void HeaderView::paint(QPainter& painter, const QRectF& frame, const QWidget& widget) {
    painter.setFont(textFont(TextStyle::callout, widget.font()));
    painter.setPen(widget.palette().color(QPalette::PlaceholderText));
    painter.drawText(frame, Qt::AlignLeading | Qt::AlignVCenter | Qt::TextDontClip, tr("Process"));
    painter.drawText(frame, Qt::AlignTrailing | Qt::AlignVCenter | Qt::TextDontClip, tr("Usage"));
}

} // namespace tidewell
