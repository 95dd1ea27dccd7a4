#include "app/panel/PanelWindow.h"

#include "app/Scenes.h"
#include "desktop/appearance/RoundedBackground.h"
#include "desktop/display/LayerShell.h"
#include "desktop/display/X11.h"
#include "desktop/statusitem/PanelPosition.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

namespace tidewell {

namespace {

using namespace std::chrono_literals;

// A click on the host takes the focus from the panel, which closes it, and is reported after that.
// Such a click must not open the panel again. The host itself is all that delays the report.
constexpr auto sameClick = 300ms;

constexpr QMargins aroundItem(24, 24, 24, 24);

// Until the focus has gone from one of our windows to another.
constexpr auto focusChange = 250ms;
// Until a window that goes has lost the focus.
constexpr auto focusReturn = 50ms;
// Until the window manager has answered the panel's wish for the focus.
constexpr auto focusRequest = 1500ms;
// Where the focus follows the pointer, it is lost on the way from one of our windows to another.
constexpr auto pointersWay = 1000ms;

/// Whether it is a window that may have had the focus, as menus and tool tips have not.
bool isOrdinaryWindow(const QObject& object) {
    const auto* const widget = qobject_cast<const QWidget*>(&object);
    if (widget == nullptr || !widget->isWindow()) {
        return false;
    }
    const Qt::WindowType type = widget->windowType();
    return type == Qt::Window || type == Qt::Dialog || type == Qt::Tool;
}

} // namespace

PanelWindow::PanelWindow(MakeContent makeContent, std::function<std::optional<QRect>()> itemPlace)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , makeContent_(std::move(makeContent))
    , itemPlace_(std::move(itemPlace))
    , isAtEdge_(layershell::isUsed())
    , outsideClicks_([this](std::optional<QPoint> passed) {
        const auto item = itemPlace_();
        if (passed && !item) {
            closeByItself();
        } else if (!passed || !item->marginsAdded(aroundItem).contains(*passed)) {
            close(); // a click on the item is told by its host
        }
    }) {
    setObjectName(QStringLiteral("panel"));
    useRoundedBackground(*this, windowCornerRadius);
    // The focus starts here, so that no control has a focus ring before Tab was pressed.
    setFocusPolicy(Qt::ClickFocus);
    focusWait_.setSingleShot(true);
    connect(&focusWait_, &QTimer::timeout, this, &PanelWindow::closeWithoutFocus);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* window) {
        hadFocus_ = hadFocus_ || window != nullptr;
        const bool isOnItsWay = pointerLeft_.isValid() && !pointerLeft_.hasExpired(100);
        awaitFocus(isOnItsWay ? pointersWay : focusChange);
        if (isAtEdge_ && isVisible() && window != nullptr) {
            outsideClicks_.setOn(window == windowHandle()); // our other windows lie below covers
        }
    });
    screensChanged_.setSingleShot(true);
    connect(&screensChanged_, &QTimer::timeout, this, &PanelWindow::followScreens);
    qApp->installEventFilter(this);
}

void PanelWindow::toggle() {
    const bool isSameClick =
        closedByItself_.isValid() && !closedByItself_.hasExpired(sameClick / 1ms);
    closedByItself_.invalidate();
    if (isVisible()) {
        close();
    } else if (!isSameClick) {
        open();
    }
}

void PanelWindow::open() {
    if (!isVisible()) {
        place();
        hadFocus_ = false;
        x11::leaveOutOfTaskBars(*this);
        x11::useActivationToken(*this);
        if (isAtEdge_) {
            layershell::putAtEdge(*this, geometry(), layershell::Layer::aboveBars);
        }
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

void PanelWindow::place() {
    const QRect place = panelPosition(itemPlace_(), screenAreas(), QSize(panelWidth, panelHeight));
    setFixedSize(place.size());
    move(place.topLeft());
}

void PanelWindow::followScreens() {
    if (!isVisible()) {
        return;
    }
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr || screen->geometry().isEmpty()) {
        close(); // the last one went
        return;
    }
    if (isAtEdge_) {
        hide(); // it may have gone with its screen
        open();
        return;
    }
    const QRect earlier = geometry();
    place();
    if (geometry() != earlier) {
        // As if it opened there: windows beside it were placed for the earlier place.
        content_->hide();
        content_->show();
    }
}

void PanelWindow::addContent() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    const MakeContent makeContent = std::exchange(makeContent_, nullptr);
    // On a screen too low for all of it the content scrolls.
    QWidget* content = makeContent().release();
    content_ = new ThumbScrollArea(content);
    // The panel paints the background and the line around it.
    content->setAutoFillBackground(false);
    content_->viewport()->setAutoFillBackground(false);
    layout->addWidget(content_);
}

void PanelWindow::adopt(QWidget& window) {
    if (isAtEdge_) {
        // Such windows the compositor places beside their parent, as the others cannot be.
        window.setWindowFlags((window.windowFlags() & ~Qt::WindowType_Mask) | Qt::ToolTip);
    }
    window.winId(); // creates the handle
    x11::leaveOutOfTaskBars(window);
    window.windowHandle()->setTransientParent(windowHandle());
}

bool PanelWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Leave) {
        pointerLeft_.start();
    } else if (event->type() == QEvent::Show && isOrdinaryWindow(*watched)) {
        awaitFocus(focusRequest);
    } else if (event->type() == QEvent::Hide && isVisible() && isOrdinaryWindow(*watched)) {
        // Qt does not tell of the focus that goes with a window which is deleted.
        awaitFocus(focusRequest);
        QTimer::singleShot(focusReturn, this, &PanelWindow::takeFocusBack);
    }
    return QWidget::eventFilter(watched, event);
}

void PanelWindow::awaitFocus(std::chrono::milliseconds patience) {
    if (focusWait_.remainingTimeAsDuration() < patience) { // -1 where it does not run
        focusWait_.start(patience);
    }
}

void PanelWindow::closeWithoutFocus() {
    if (isDeaf()) {
        closeByItself();
    }
}

void PanelWindow::takeFocusBack() {
    if (isDeaf()) {
        activateWindow();
    }
}

bool PanelWindow::isDeaf() const {
    return isVisible() && hadFocus_ && !x11::hasFocus();
}

void PanelWindow::closeByItself() {
    close();
    closedByItself_.start();
}

void PanelWindow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        // Keys that come from the content, it has had already.
        content_->verticalScrollBar()->triggerAction(event->key() == Qt::Key_PageUp
                                                         ? QScrollBar::SliderPageStepSub
                                                         : QScrollBar::SliderPageStepAdd);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

// QWidget would repaint all of the panel, which looks the same with the focus.
void PanelWindow::focusInEvent(QFocusEvent*) {}
void PanelWindow::focusOutEvent(QFocusEvent*) {}

void PanelWindow::showEvent(QShowEvent* event) {
    outsideClicks_.setOn(true);
    QWidget::showEvent(event);
}

void PanelWindow::hideEvent(QHideEvent* event) {
    outsideClicks_.setOn(false);
    if (!event->spontaneous() && content_ != nullptr) {
        content_->hide();
        content_->verticalScrollBar()->setValue(0);
    }
    QWidget::hideEvent(event);
}

} // namespace tidewell
