#include "ui/LinearGauge.h"

#include "ui/Drawing.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"

#include <QPainter>

#include <algorithm>

namespace tidewell {

namespace {

constexpr double trackHeight = 7;
constexpr double gap = 10;          // between the track and the texts of its ends
constexpr double lineDistance = 16; // from the track's middle to that of the value's text

} // namespace

LinearGauge::LinearGauge() {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize LinearGauge::sizeHint() const {
    return {200, 36};
}

QSize LinearGauge::minimumSizeHint() const {
    return {80, 32};
}

void LinearGauge::paintEvent(QPaintEvent*) {
    const LinearGaugeContent& shown = content();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const QRectF whole(rect());
    const double trackMiddle = whole.center().y() - lineDistance / 2;
    const auto mirrored = [&](const QRectF& place) {
        return isMirrored
                   ? QRectF(whole.right() - place.right(), place.y(), place.width(), place.height())
                   : place;
    };

    painter.setFont(textFont(TextStyle::footnote, font()));
    painter.setPen(toQColor(colours::secondaryText, appearanceOf(palette())));
    const QFontMetricsF endMetrics(painter.font());
    const double minimumWidth = endMetrics.horizontalAdvance(shown.minimumText);
    const double maximumWidth = endMetrics.horizontalAdvance(shown.maximumText);
    const QRectF ends(0, 0, whole.width(), 2 * trackMiddle);
    drawTextLine(painter, ends, isMirrored ? Qt::AlignRight : Qt::AlignLeft, shown.minimumText,
                 minimumWidth);
    drawTextLine(painter, ends, isMirrored ? Qt::AlignLeft : Qt::AlignRight, shown.maximumText,
                 maximumWidth);

    const double start = minimumWidth > 0 ? minimumWidth + gap : 0;
    const double end = whole.width() - (maximumWidth > 0 ? maximumWidth + gap : 0);
    const double trackTop = trackMiddle - trackHeight / 2;
    const QRectF track(start, trackTop, std::max(end - start, trackHeight), trackHeight);
    const Appearance appearance = appearanceOf(palette());
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        withOpacity(palette().color(foregroundRole()), hasHighContrast(appearance) ? 0.5 : 0.12));
    painter.drawRoundedRect(mirrored(track), trackHeight / 2, trackHeight / 2);
    const double fraction = gaugeFraction(shown.value, shown.minimum, shown.maximum);
    if (fraction > 0) { // however little it is, its ends stay round
        QRectF filled = track;
        filled.setWidth(std::max(fraction * track.width(), trackHeight));
        painter.setBrush(toQColor(shown.tint, appearance));
        painter.drawRoundedRect(mirrored(filled), trackHeight / 2, trackHeight / 2);
    }

    painter.setFont(textFont(TextStyle::callout, font()));
    painter.setPen(palette().color(foregroundRole()));
    drawTextLine(painter, {0, trackMiddle, whole.width(), 2 * lineDistance}, Qt::AlignHCenter,
                 shown.text, QFontMetricsF(painter.font()).horizontalAdvance(shown.text));
}

} // namespace tidewell
