#include "app/processes/WindowAndPositionReader.h"

#include "app/panel/AnchorPoint.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

namespace tidewell {

WindowAndPositionReader::WindowAndPositionReader(
    std::function<void(QWidget* window)> onWindowUpdate,
    std::function<void(QPointF position)> onPositionUpdate, QWidget* parent)
    : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    const auto report = [view = QPointer<WindowAndPositionReader>(this),
                         tellWindow = std::move(onWindowUpdate),
                         tellPosition = std::move(onPositionUpdate)] {
        if (!view || view->isWindow()) {
            tellWindow(nullptr);
            return;
        }
        tellWindow(view->window());
        const QScreen* const screen = QGuiApplication::primaryScreen();
        if (view && screen != nullptr) {
            tellPosition(upwardFromDesktop(view->corner(), screen->geometry()));
        }
    };
    // To the application: the report is made without the view, too.
    QMetaObject::invokeMethod(qApp, report, Qt::QueuedConnection);
}

void WindowAndPositionReader::showEvent(QShowEvent* event) {
    if (window()->testAttribute(Qt::WA_Moved)) {
        windowPlace_ = window()->geometry().topLeft();
    }
    QWidget::showEvent(event);
}

QPointF WindowAndPositionReader::corner() const {
    const QPointF lowerLeft(0, height());
    return windowPlace_ ? mapTo(window(), lowerLeft) + *windowPlace_ : mapToGlobal(lowerLeft);
}

} // namespace tidewell
