#include "app/panel/PanelWindow.h"

#include "app/Scenes.h"
#include "desktop/appearance/RoundedBackground.h"
#include "desktop/statusitem/PanelPosition.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollArea>
#include <QVBoxLayout>

namespace tidewell {

namespace {

// A click on the host takes the focus from the panel, which closes it, and is reported after that.
// Such a click must not open the panel again. The host itself is all that delays the report.
constexpr qint64 sameClickMilliseconds = 300;

} // namespace

PanelWindow::PanelWindow(MakeContent makeContent, std::function<std::optional<QRect>()> itemPlace)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , makeContent_(std::move(makeContent))
    , itemPlace_(std::move(itemPlace)) {
    setObjectName(QStringLiteral("panel"));
    useRoundedBackground(*this, windowCornerRadius);
    // The focus starts here, so that no control has a focus ring before Tab was pressed.
    setFocusPolicy(Qt::ClickFocus);
    connect(qApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationInactive) {
                    closeBecauseOfAnotherProgram();
                }
            });
}

void PanelWindow::toggle() {
    const bool sameClick = closedByAnotherProgram_.isValid() &&
                           closedByAnotherProgram_.elapsed() < sameClickMilliseconds;
    closedByAnotherProgram_.invalidate();
    if (isVisible()) {
        close();
    } else if (!sameClick) {
        open();
    }
}

void PanelWindow::open() {
    if (!isVisible()) {
        const QRect place =
            panelPosition(itemPlace_(), screenAreas(), QSize(panelWidth, panelHeight));
        setFixedSize(place.size());
        move(place.topLeft());
    }
    setFocus();
    show();
    raise();
    activateWindow();
    // After show(), so that the window manager is at work meanwhile. The first frame has it all.
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

// QWidget would repaint all of the panel, which looks the same with the focus.
void PanelWindow::focusInEvent(QFocusEvent*) {}
void PanelWindow::focusOutEvent(QFocusEvent*) {}

void PanelWindow::hideEvent(QHideEvent* event) {
    if (!event->spontaneous() && content_ != nullptr) {
        content_->hide();
    }
    QWidget::hideEvent(event);
}

} // namespace tidewell
