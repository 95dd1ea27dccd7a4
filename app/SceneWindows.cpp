#include "app/SceneWindows.h"

#include "desktop/appearance/RoundedBackground.h"
#include "ui/Pictures.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>

namespace tidewell {

namespace {

using namespace std::chrono_literals;

constexpr auto untilInFront = 100ms;

/// Brings a window back that a window manager minimises: without a frame it is not to be.
class NeverMinimised final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        auto& window = *static_cast<QWidget*>(watched);
        if (event->type() == QEvent::WindowStateChange && window.isMinimized()) {
            window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        }
        return false;
    }
};

QWidget* makeWindow(const WindowScene& scene, std::unique_ptr<QWidget> content) {
    // Not owned by anything but its being open: closing deletes it.
    auto* window = new QWidget(nullptr, Qt::Window);
    if (scene.placement == Placement::ownChoice) {
        window->setWindowFlag(Qt::Tool); // belongs to the panel, and in no task bar
    }
    if (scene.titleBar == TitleBar::hidden) {
        window->setWindowFlag(Qt::FramelessWindowHint);
        window->installEventFilter(new NeverMinimised(window));
        useRoundedBackground(*window, windowCornerRadius);
    }
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setObjectName(QLatin1String(scene.objectName));
    window->setWindowTitle(scene.title);
    window->setWindowIcon(applicationIcon());
    for (const QKeySequence& keys :
         {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
        auto* const shortcut = new QShortcut(keys, window);
        QObject::connect(shortcut, &QShortcut::activated, window, &QWidget::close);
    }
    auto* layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content.release());
    // Larger only where the user's font or language needs it.
    window->setFixedSize(QSize(scene.width, scene.height).expandedTo(window->minimumSizeHint()));
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (scene.placement == Placement::centred && screen != nullptr) {
        const QRect available = screen->availableGeometry();
        QRect frame = window->rect();
        frame.moveCenter(available.center());
        window->move(frame.topLeft());
    }
    return window;
}

} // namespace

SceneWindows::~SceneWindows() {
    for (auto& [identifier, entry] : scenes_) {
        delete entry.window.data();
    }
}

void SceneWindows::add(WindowScene scene, MakeContent makeContent) {
    const SceneIdentifier identifier = scene.identifier;
    scenes_.insert_or_assign(identifier, Entry{std::move(scene), std::move(makeContent), nullptr});
}

void SceneWindows::openWindow(SceneIdentifier identifier) {
    Entry& entry = scenes_.at(identifier);
    if (window(identifier) == nullptr) {
        entry.window = makeWindow(entry.scene, entry.makeContent());
        entry.window->setPalette(palette_);
        if (entry.window->windowType() == Qt::Tool) {
            adopt_(*entry.window);
        }
    }
    // Not every window manager takes showing or activating for unminimising.
    entry.window->setWindowState(entry.window->windowState() & ~Qt::WindowMinimized);
    entry.window->show();
}

void SceneWindows::bringWindowToFront(SceneIdentifier identifier) const {
    if (QWidget* open = window(identifier)) {
        open->raise();
        open->activateWindow();
    }
}

void SceneWindows::openAuxiliaryWindow(SceneIdentifier identifier) {
    openWindow(identifier);
    QTimer::singleShot(untilInFront, &context_,
                       [this, identifier] { bringWindowToFront(identifier); });
}

void SceneWindows::dismissWindow(SceneIdentifier identifier) const {
    if (QWidget* open = window(identifier)) {
        open->close();
    }
}

void SceneWindows::setPalette(const QPalette& palette) {
    palette_ = palette;
    for (auto& [identifier, entry] : scenes_) {
        if (entry.window) {
            entry.window->setPalette(palette);
        }
    }
}

QWidget* SceneWindows::window(SceneIdentifier identifier) const {
    const auto found = scenes_.find(identifier);
    // A window that was closed is there, hidden, until the event loop deletes it.
    return found == scenes_.end() || !found->second.window || found->second.window->isHidden()
               ? nullptr
               : found->second.window.data();
}

} // namespace tidewell
