#include "desktop/display/ClickCatcher.h"

#include "desktop/display/X11.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

namespace tidewell {

ClickCatcher::ClickCatcher(QScreen& screen, std::function<void()> clicked)
    : QWindow(&screen)
    , clicked_(std::move(clicked)) {
    // As a tool tip: the window manager leaves it where it is, and never gives it the focus.
    setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    QSurfaceFormat translucent = format();
    translucent.setAlphaBufferSize(8);
    setFormat(translucent);
    setGeometry(screen.geometry());
    leaveHoles();
    show();
    x11::makeTransparent(*this);
    qApp->installEventFilter(this);
}

bool ClickCatcher::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
        if (const auto* const widget = qobject_cast<const QWidget*>(watched);
            widget != nullptr && widget->isWindow()) {
            leaveHoles();
        }
        break;
    default:
        break;
    }
    return QWindow::eventFilter(watched, event);
}

void ClickCatcher::mousePressEvent(QMouseEvent*) {
    clicked_();
}

void ClickCatcher::leaveHoles() {
    QRegion region(geometry());
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) {
            region -= window->frameGeometry();
        }
    }
    setMask(region.translated(-position()));
}

} // namespace tidewell
