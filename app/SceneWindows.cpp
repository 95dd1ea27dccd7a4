#include "app/SceneWindows.h"

#include "desktop/appearance/RoundedBackground.h"
#include "ui/Pictures.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace tidewell {

namespace {

using namespace std::chrono_literals;

constexpr auto untilInFront = 100ms;

QString objectName(std::string_view identifier) {
    return QString::fromUtf8(identifier.data(), qsizetype(identifier.size()));
}

QWidget* makeWindow(const WindowScene& scene, std::unique_ptr<QWidget> content) {
    // Not owned by anything but its being open: closing deletes it.
    auto* window = new QWidget(nullptr, Qt::Window);
    if (scene.titleBar == TitleBar::hidden) {
        window->setWindowFlag(Qt::FramelessWindowHint);
        useRoundedBackground(*window, windowCornerRadius);
    }
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setObjectName(objectName(scene.identifier));
    window->setWindowTitle(QString::fromStdString(scene.title));
    window->setWindowIcon(applicationIcon());
    auto* layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content.release());
    // Larger only where the user's font or language needs it.
    window->setFixedSize(QSize(scene.width, scene.height).expandedTo(window->minimumSizeHint()));
    const QScreen* const screen = QApplication::primaryScreen();
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
    const std::string identifier(scene.identifier);
    scenes_.insert_or_assign(identifier, Entry{std::move(scene), std::move(makeContent), nullptr});
}

void SceneWindows::openWindow(std::string_view identifier) {
    const auto found = scenes_.find(identifier);
    if (found == scenes_.end()) {
        return;
    }
    Entry& entry = found->second;
    if (window(identifier) == nullptr) {
        entry.window = makeWindow(entry.scene, entry.makeContent());
        entry.window->setPalette(palette_);
    }
    // Not every window manager takes showing or activating for unminimising.
    entry.window->setWindowState(entry.window->windowState() & ~Qt::WindowMinimized);
    entry.window->show();
}

void SceneWindows::bringWindowToFront(const QString& identifier) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(windows, [&](const QWidget* window) {
        return window->isVisible() && window->objectName() == identifier;
    });
    if (found != windows.end()) {
        (*found)->raise();
        (*found)->activateWindow();
    }
}

void SceneWindows::openAuxiliaryWindow(std::string_view identifier) {
    openWindow(identifier);
    QTimer::singleShot(untilInFront, qApp,
                       [name = objectName(identifier)] { bringWindowToFront(name); });
}

void SceneWindows::dismissWindow(std::string_view identifier) const {
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

QWidget* SceneWindows::window(std::string_view identifier) const {
    const auto found = scenes_.find(identifier);
    // A window that was closed is there, hidden, until the event loop deletes it.
    return found == scenes_.end() || !found->second.window || found->second.window->isHidden()
               ? nullptr
               : found->second.window.data();
}

} // namespace tidewell
