#include "app/panel/PanelWindow.h"

#include "app/Scenes.h"
#include "desktop/statusitem/PanelPosition.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

namespace tidewell {

namespace {

// A click on a host's status item first makes the host active, which closes the panel, and is
// reported after that: such a click must not open the panel again. Both come of one press of the
// button, so that the time between them is the host's own delay.
constexpr qint64 sameClickMilliseconds = 300;

} // namespace

PanelWindow::PanelWindow(MakeContent makeContent)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , corners_(*this, windowCornerRadius)
    , makeContent_(std::move(makeContent)) {
    setObjectName(QStringLiteral("panel"));
    // The focus waits here: a panel that was clicked up marks none of its controls.
    setFocusPolicy(Qt::ClickFocus);
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationInactive) {
                    closeBecauseOfAnotherProgram();
                }
            });
}

void PanelWindow::toggle(const StatusItemActivation& activation) {
    const bool sameClick = closedByAnotherProgram_.isValid() &&
                           closedByAnotherProgram_.elapsed() < sameClickMilliseconds;
    closedByAnotherProgram_.invalidate();
    if (isVisible()) {
        close();
    } else if (!sameClick) {
        open(activation);
    }
}

void PanelWindow::open(const StatusItemActivation& activation) {
    if (!isVisible()) {
        const QRect place = panelPosition(activation, QSize(panelWidth, panelHeight));
        setFixedSize(place.size());
        move(place.topLeft());
    }
    setFocus();
    show();
    raise();
    activateWindow();
    // While the window manager places the window, its content is brought up to date: it is there
    // when the first frame is painted.
    if (makeContent_) {
        addContent();
    }
    content_->show();
}

void PanelWindow::addContent() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    const MakeContent makeContent = std::exchange(makeContent_, nullptr);
    // On a screen too low for all of it the content scrolls.
    auto* frame = new QScrollArea;
    frame->setFrameShape(QFrame::NoFrame);
    frame->setFocusPolicy(Qt::NoFocus);
    frame->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frame->setWidgetResizable(true);
    QWidget* content = makeContent().release();
    frame->setWidget(content);
    // The panel paints the background and the line around it.
    content->setAutoFillBackground(false);
    frame->viewport()->setAutoFillBackground(false);
    layout->addWidget(frame);
    content_ = frame;
}

void PanelWindow::closeBecauseOfAnotherProgram() {
    if (isVisible()) {
        close();
        closedByAnotherProgram_.start();
    }
}

void PanelWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void PanelWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    corners_.paint(painter);
}

// The panel looks the same with the focus: all of it would be painted once more.
void PanelWindow::focusInEvent(QFocusEvent*) {}
void PanelWindow::focusOutEvent(QFocusEvent*) {}

void PanelWindow::hideEvent(QHideEvent* event) {
    if (!event->spontaneous() && content_ != nullptr) {
        content_->hide();
    }
    QWidget::hideEvent(event);
}

void PanelWindow::resizeEvent(QResizeEvent* event) {
    corners_.resized();
    QWidget::resizeEvent(event);
}

} // namespace tidewell
