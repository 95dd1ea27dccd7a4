#include "desktop/display/ScreenCover.h"

#include "desktop/display/LayerShell.h"

#include <QScreen>
#include <QTouchEvent>

namespace tidewell {

ScreenCover::ScreenCover(QScreen& screen, std::function<void()> clicked)
    : QWindow(&screen)
    , clicked_(std::move(clicked)) {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    QSurfaceFormat translucent = format();
    translucent.setAlphaBufferSize(8);
    setFormat(translucent);
    setGeometry(screen.geometry());
    layershell::coverScreen(*this);
    show();
}

void ScreenCover::exposeEvent(QExposeEvent*) {
    if (!isExposed()) {
        return;
    }
    // A fresh picture is transparent. What is not painted takes no memory.
    const QRect least(0, 0, 1, 1);
    store_.resize(size());
    store_.beginPaint(least);
    store_.endPaint();
    store_.flush(least);
}

void ScreenCover::mousePressEvent(QMouseEvent*) {
    clicked_();
}

void ScreenCover::touchEvent(QTouchEvent* event) {
    if (event->type() == QEvent::TouchBegin) {
        clicked_();
    }
}

} // namespace tidewell
