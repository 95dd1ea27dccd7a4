#include "desktop/statusitem/LabelWindow.h"

#include "desktop/appearance/RoundedBackground.h"
#include "desktop/display/FullScreenWatch.h"
#include "desktop/display/LayerShell.h"
#include "desktop/display/ScreenWatch.h"
#include "desktop/display/X11.h"
#include "desktop/statusitem/StatusMenu.h"
#include "ui/Drawing.h"
#include "ui/Palette.h"
#include "ui/Symbols.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScreen>

#include <utility>

namespace tidewell {

namespace {

// Points.
constexpr int symbolSize = 16; // including its margin; the disc is 12
constexpr int spacing = 8;
constexpr int horizontalPadding = 12;
constexpr int verticalPadding = 6;
constexpr int cornerRadius = 8;

/// A button, so that it works by keyboard and with a screen reader.
class LabelWindow final : public QAbstractButton, public StatusItem {
public:
    LabelWindow(DesktopAppearance& appearance, StatusItemPlace& itemPlace,
                const KeptLabelPosition& position, StatusItemBehaviour behaviour)
        : appearance_(appearance)
        , itemPlace_(itemPlace)
        , position_(position)
        , behaviour_(std::move(behaviour))
        , isAtEdge_(layershell::isUsed())
        , menu_(behaviour_.menu, appearance)
        , appearanceChanged_(appearance.didChange([this] { followAppearance(); })) {
        setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        useRoundedBackground(*this, cornerRadius);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_QuitOnClose, false);
        setFocusPolicy(Qt::StrongFocus);
        setWindowTitle(QString::fromStdString(behaviour_.title));
        setAccessibleName(windowTitle());
        connect(this, &QAbstractButton::clicked, this, [this] { activate(); });
        followAppearance();
    }

    void setContent(const StatusItemContent& content) override {
        const bool resizes = content.text != content_.text;
        content_ = content;
        setText(QString::fromStdString(content.text));
        setAccessibleDescription(QString::fromStdString(content.description));
        if (resizes) {
            place();
        }
        showUnlessCovered();
        update();
    }

    QSize sizeHint() const override {
        const QFontMetrics metrics = fontMetrics();
        return {2 * horizontalPadding + symbolSize + spacing + metrics.horizontalAdvance(text()),
                2 * verticalPadding + std::max(symbolSize, metrics.height())};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        const Appearance appearance = appearance_.desktop();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        // Symbol and text are aligned at the bottom.
        const int bottom = height() - verticalPadding;
        if (const auto image = symbolImage(content_.symbolName, content_.colour.in(appearance),
                                           symbolSize, devicePixelRatioF())) {
            painter.drawImage(QPoint(horizontalPadding, bottom - symbolSize), *image);
        }
        const QRect textPlace(horizontalPadding + symbolSize + spacing, 0, width(), bottom);
        painter.setPen(toQColor(colours::primary, appearance));
        painter.drawText(textPlace, Qt::AlignLeft | Qt::AlignBottom, text());
        if (showsFocus(*this)) {
            drawFocusRing(painter, rect(), cornerRadius - 1, appearance);
        }
    }

    // Window managers give the focus by keys, too, which Qt does not count as such.
    void focusInEvent(QFocusEvent* event) override {
        setAttribute(Qt::WA_KeyboardFocusChange, QGuiApplication::mouseButtons() == Qt::NoButton);
        QAbstractButton::focusInEvent(event);
    }

    void mousePressEvent(QMouseEvent* event) override {
        setAttribute(Qt::WA_KeyboardFocusChange, false);
        pressedAt_ = event->globalPosition().toPoint();
        shownAt_ = (event->globalPosition() - event->position()).toPoint();
        pressOffset_ = shownAt_ - pressedAt_;
        QAbstractButton::mousePressEvent(event);
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        const QPoint pointer = event->globalPosition().toPoint();
        isDragged_ = isDragged_ || (event->buttons() == Qt::LeftButton &&
                                    (pointer - pressedAt_).manhattanLength() >=
                                        QApplication::startDragDistance());
        if (isDragged_) {
            setDown(false); // no click any more
            shownAt_ = pointer + pressOffset_;
            isAtEdge_ ? movePicture() : move(shownAt_);
        }
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        QAbstractButton::mouseReleaseEvent(event);
        if (std::exchange(isDragged_, false)) {
            write(position_.defaults, position_.preference,
                  storedLabelPosition(placeShown(), screenAreas()));
            place();
            picture_.reset();
            showUnlessCovered();
        }
    }

    void hideEvent(QHideEvent* event) override {
        QAbstractButton::hideEvent(event);
        isDragged_ = false; // no release comes
        picture_.reset();
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            click();
        } else {
            QAbstractButton::keyPressEvent(event);
        }
    }

    // Alt+F4, say. Ignoring the event instead would make QApplication::quit() fail.
    void closeEvent(QCloseEvent* event) override {
        QAbstractButton::closeEvent(event);
        QMetaObject::invokeMethod(this, [this] { showUnlessCovered(); }, Qt::QueuedConnection);
    }

    void changeEvent(QEvent* event) override {
        if (event->type() == QEvent::WindowStateChange && isMinimized()) {
            QMetaObject::invokeMethod(this, &QWidget::showNormal, Qt::QueuedConnection);
        }
        QAbstractButton::changeEvent(event);
    }

    void contextMenuEvent(QContextMenuEvent*) override { menu_.popUp(placeShown().bottomLeft()); }

private:
    // Queued: the call may run a nested event loop in which this window is deleted.
    void activate() {
        itemPlace_.isAt(placeShown());
        QMetaObject::invokeMethod(this, behaviour_.activated, Qt::QueuedConnection);
    }

    /// Where the window is. Not pos(): Qt queries the X server once, after mapping, and may do so
    /// before the window manager has moved the window.
    QRect placeShown() const { return {shownAt_, size()}; }

    /// Wayland tells places relative to the window that was pressed, which has to stay where it is
    /// so long. What moves is a picture of it.
    void movePicture() {
        if (!picture_) {
            picture_ = std::make_unique<QLabel>(nullptr, Qt::Tool | Qt::FramelessWindowHint);
            picture_->setAttribute(Qt::WA_TranslucentBackground);
            picture_->setPixmap(grab());
        }
        layershell::putAtEdge(*picture_, placeShown(), layershell::Layer::bars);
        picture_->show();
    }

    void followAppearance() { setPalette(paletteFor(appearance_.desktop())); }

    void followScreens() {
        if (isAtEdge_) {
            hide(); // what was shown went with its screen, perhaps
        }
        place();
        showUnlessCovered();
    }

    void place() {
        const QSize size = sizeHint();
        if (!isDragged_) {
            const auto kept = stored(position_.defaults, position_.preference);
            shownAt_ = labelPosition(kept.value_or(std::string()), screenAreas(), size);
        }
        if (!isAtEdge_) {
            setGeometry({shownAt_, size});
        } else if (!isDragged_) {
            layershell::putAtEdge(*this, {shownAt_, size}, layershell::Layer::bars);
        }
        itemPlace_.isAt(placeShown());
    }

    void showUnlessCovered() {
        if (isDragged_) {
            return; // hidden, it would not be told of the release
        }
        const QScreen* const screen = QGuiApplication::screenAt(placeShown().center());
        if (screen == nullptr || fullScreen_.fills(*screen)) {
            hide();
        } else if (!isVisible()) {
            // Each time: what a window manager closed is another window to it when it is back.
            place();
            x11::leaveOutOfTaskBars(*this);
            show();
            x11::showOnAllWorkspaces(*this);
        }
    }

    DesktopAppearance& appearance_;
    StatusItemPlace& itemPlace_;
    KeptLabelPosition position_;
    StatusItemBehaviour behaviour_;
    bool isAtEdge_; // by the layer shell
    StatusMenuPopup menu_;
    StatusItemContent content_;
    QPoint shownAt_;     // as last set, or computed from the last mouse press
    QPoint pressedAt_;   // on the screen
    QPoint pressOffset_; // from there to the window's corner
    bool isDragged_ = false;
    std::unique_ptr<QLabel> picture_;
    FullScreenWatch fullScreen_{[this] { showUnlessCovered(); }};
    ScreenWatch screenWatch_{[this] { followScreens(); }};
    Subscription appearanceChanged_;
};

} // namespace

std::unique_ptr<StatusItem> makeLabelWindow(DesktopAppearance& appearance, StatusItemPlace& place,
                                            const KeptLabelPosition& position,
                                            StatusItemBehaviour behaviour) {
    return std::make_unique<LabelWindow>(appearance, place, position, std::move(behaviour));
}

} // namespace tidewell
