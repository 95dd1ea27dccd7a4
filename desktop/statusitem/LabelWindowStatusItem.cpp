#include "desktop/statusitem/LabelWindowStatusItem.h"

#include "desktop/appearance/SoftCorners.h"
#include "desktop/statusitem/StatusMenu.h"
#include "desktop/statusitem/X11.h"
#include "ui/Drawing.h"
#include "ui/Palette.h"
#include "ui/Symbols.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

namespace tidewell {

namespace {

// All in points.
constexpr int symbolSize = 16; // with the margin that belongs to the picture; the disc is 12
constexpr int spacing = 8;
constexpr int horizontalPadding = 12;
constexpr int verticalPadding = 6;
constexpr int cornerRadius = 8;
constexpr int screenMargin = 8;

} // namespace

/// A button, for the keyboard's and assistive technologies' sake.
class LabelWindow final : public QAbstractButton {
public:
    LabelWindow(DesktopAppearance& appearance, StatusItemBehaviour behaviour)
        : appearance_(appearance)
        , behaviour_(std::move(behaviour))
        , appearanceChanged_(appearance.didChange([this] { followAppearance(); })) {
        setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_QuitOnClose, false);
        setFocusPolicy(Qt::StrongFocus);
        setWindowTitle(QString::fromStdString(behaviour_.title));
        setAccessibleName(windowTitle());
        connect(this, &QAbstractButton::clicked, this, [this] { activate(); });
        connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, [this] { followScreen(); });
        followAppearance();
        followScreen();
    }

    void setContent(const StatusItemContent& content) {
        if (isVisible() && content == content_) {
            return;
        }
        const bool resizes = content.text != content_.text || !isVisible();
        content_ = content;
        setText(QString::fromStdString(content.text));
        setAccessibleDescription(text());
        if (resizes) {
            place();
        }
        if (!isVisible()) {
            winId(); // created, so that it can be told before it is shown
            x11::showOnAllDesktops(*this);
            show();
        }
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
        corners_.paint(painter);
        painter.setRenderHint(QPainter::Antialiasing);
        // Symbol and text stand on the same line.
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

    void resizeEvent(QResizeEvent*) override { corners_.resized(); }

    // The window manager's keys may have brought the focus here, which Qt does not tell.
    void focusInEvent(QFocusEvent* event) override {
        setAttribute(Qt::WA_KeyboardFocusChange, QGuiApplication::mouseButtons() == Qt::NoButton);
        QAbstractButton::focusInEvent(event);
    }

    void mousePressEvent(QMouseEvent* event) override {
        setAttribute(Qt::WA_KeyboardFocusChange, false);
        shownAt_ = (event->globalPosition() - event->position()).toPoint();
        QAbstractButton::mousePressEvent(event);
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            click();
        } else {
            QAbstractButton::keyPressEvent(event);
        }
    }

    // Closed by the window manager's keys, say. Ignoring that would keep the program from ending.
    void closeEvent(QCloseEvent* event) override {
        QAbstractButton::closeEvent(event);
        QMetaObject::invokeMethod(this, &QWidget::show, Qt::QueuedConnection);
    }

    void contextMenuEvent(QContextMenuEvent*) override {
        popUpStatusMenu(behaviour_.menu, appearance_.desktop(), placeShown().bottomLeft());
    }

private:
    // Not from within the window, which may be gone before that returns.
    void activate() {
        QMetaObject::invokeMethod(
            this,
            [activated = behaviour_.activated, place = placeShown()] {
                activated({std::nullopt, place});
            },
            Qt::QueuedConnection);
    }

    /// Where the user sees the window. The toolkit may be wrong about that for good: it asks the X
    /// server while the window manager is still at moving the window to where it was to be.
    QRect placeShown() const { return {shownAt_, size()}; }

    void followAppearance() { setPalette(paletteFor(appearance_.desktop())); }

    void followScreen() {
        QObject::disconnect(screenChanged_);
        if (const QScreen* const screen = QGuiApplication::primaryScreen()) {
            screenChanged_ =
                connect(screen, &QScreen::availableGeometryChanged, this, [this] { place(); });
            place();
        }
    }

    void place() {
        const QScreen* const screen = QGuiApplication::primaryScreen();
        if (screen == nullptr) {
            return; // the last one was unplugged; the next is told
        }
        const QRect available = screen->availableGeometry();
        const QSize size = sizeHint();
        shownAt_ = QPoint(available.right() + 1 - screenMargin - size.width(),
                          available.top() + screenMargin);
        setGeometry({shownAt_, size});
    }

    DesktopAppearance& appearance_;
    StatusItemBehaviour behaviour_;
    StatusItemContent content_;
    SoftCorners corners_{*this, cornerRadius};
    QPoint shownAt_; // as last asked for, or as the last click told
    QMetaObject::Connection screenChanged_;
    Subscription appearanceChanged_;
};

LabelWindowStatusItem::LabelWindowStatusItem(DesktopAppearance& appearance,
                                             StatusItemBehaviour behaviour)
    : window_(std::make_unique<LabelWindow>(appearance, std::move(behaviour))) {}

LabelWindowStatusItem::~LabelWindowStatusItem() = default;

void LabelWindowStatusItem::setContent(const StatusItemContent& content) {
    window_->setContent(content);
}

} // namespace tidewell
