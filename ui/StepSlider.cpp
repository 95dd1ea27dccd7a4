#include "ui/StepSlider.h"

#include "ui/Drawing.h"
#include "ui/Palette.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace tidewell {

namespace {

constexpr double trackHeight = 4;
constexpr double thumbRadius = 7;
constexpr double markRadius = 1;
constexpr double markDistance = 10; // below the track's middle

} // namespace

StepSlider::StepSlider(int minimum, int maximum)
    : QSlider(Qt::Horizontal) {
    setRange(minimum, maximum);
    setPageStep(1);
    setFocusPolicy(Qt::StrongFocus);
}

QSize StepSlider::sizeHint() const {
    return {150, 26};
}

void StepSlider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double middle = height() / 2.0 - 2;
    // Where the style looks for the handle under the pointer.
    QStyleOptionSlider option;
    initStyleOption(&option);
    const auto placeOf = [&](int position) {
        option.sliderPosition = position;
        const QRect handle =
            style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
        return QPointF(QRectF(handle).center().x(), middle);
    };
    const auto drawTrack = [&](QPointF from, QPointF to, const QColor& colour) {
        painter.setBrush(colour);
        painter.drawRoundedRect(
            QRectF(from, to).normalized().adjusted(-trackHeight / 2, -trackHeight / 2,
                                                   trackHeight / 2, trackHeight / 2),
            trackHeight / 2, trackHeight / 2);
    };

    const QColor text = palette().color(QPalette::WindowText);
    const Appearance appearance = appearanceOf(palette());
    const bool isStrong = hasHighContrast(appearance);
    const QColor accent = toQColor(colours::accent, appearance);
    const QPointF thumb = placeOf(sliderPosition());
    drawTrack(placeOf(minimum()), placeOf(maximum()), withOpacity(text, isStrong ? 0.6 : 0.12));
    drawTrack(placeOf(minimum()), thumb, accent);
    painter.setBrush(toQColor(colours::secondaryText, appearance));
    for (int step = minimum(); step <= maximum(); ++step) {
        painter.drawEllipse(placeOf(step) + QPointF(0, markDistance), markRadius, markRadius);
    }

    painter.setBrush(isSliderDown() ? QColor(0xe8, 0xe8, 0xea) : Qt::white);
    painter.setPen(QPen(withOpacity(Qt::black, isStrong ? 1 : 0.3), 1));
    painter.drawEllipse(thumb, thumbRadius, thumbRadius);
    if (showsFocus(*this)) {
        const QPointF corner(thumbRadius + 1, thumbRadius + 1);
        drawFocusRing(painter, {thumb - corner, thumb + corner}, thumbRadius, appearance);
    }
}

} // namespace tidewell
