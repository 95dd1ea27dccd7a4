#include "desktop/appearance/RoundedBackground.h"

#include "desktop/display/X11.h"
#include "ui/Drawing.h"
#include "ui/Palette.h"

#include <QBitmap>
#include <QEvent>
#include <QPainter>
#include <QWidget>

namespace tidewell {

namespace {

class RoundedBackground final : public QObject {
public:
    RoundedBackground(QWidget& window, double radius)
        : QObject(&window)
        , window_(window)
        , radius_(radius)
        , isComposited_(x11::isComposited()) {
        window.setAttribute(Qt::WA_TranslucentBackground, isComposited_);
        window.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            paint();
        } else if (event->type() == QEvent::Resize && !isComposited_) {
            cutCorners();
        }
        return false;
    }

private:
    void paint() {
        QPainter painter(&window_);
        drawSoftBox(painter, window_.rect(), radius_, window_.palette().window(),
                    hairline(appearanceOf(window_.palette())), 1 / window_.devicePixelRatioF());
    }

    void cutCorners() {
        QBitmap mask(window_.size());
        mask.clear();
        QPainter painter(&mask);
        painter.setBrush(Qt::color1);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(window_.rect(), radius_, radius_);
        painter.end();
        window_.setMask(mask);
    }

    QWidget& window_;
    double radius_;
    bool isComposited_;
};

} // namespace

void useRoundedBackground(QWidget& window, double radius) {
    new RoundedBackground(window, radius);
}

} // namespace tidewell
