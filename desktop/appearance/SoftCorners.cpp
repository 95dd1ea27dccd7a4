#include "desktop/appearance/SoftCorners.h"

#include "desktop/statusitem/X11.h"
#include "ui/Drawing.h"
#include "ui/Palette.h"

#include <QBitmap>
#include <QPainter>

namespace tidewell {

SoftCorners::SoftCorners(QWidget& window, double radius)
    : window_(window)
    , radius_(radius)
    , isComposited_(x11::isComposited()) {
    window.setAttribute(Qt::WA_TranslucentBackground, isComposited_);
}

void SoftCorners::resized() {
    if (!isComposited_) {
        QBitmap mask(window_.size());
        mask.clear();
        QPainter painter(&mask);
        painter.setBrush(Qt::color1);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(window_.rect(), radius_, radius_);
        painter.end();
        window_.setMask(mask);
    }
}

void SoftCorners::paint(QPainter& painter) const {
    drawSoftBox(painter, window_.rect(), radius_, window_.palette().window(),
                hairline(appearanceOf(window_.palette())), 1 / window_.devicePixelRatioF());
}

} // namespace tidewell
