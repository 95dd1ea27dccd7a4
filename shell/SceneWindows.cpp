#include "shell/SceneWindows.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

namespace tidewell {

namespace {

QWidget* makeWindow(const WindowScene& scene, std::unique_ptr<QWidget> content) {
    // Not owned by anything but its being open: closing deletes it.
    auto* window = new QWidget(nullptr, Qt::Window);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setObjectName(
        QString::fromUtf8(scene.identifier.data(), qsizetype(scene.identifier.size())));
    window->setWindowTitle(QString::fromStdString(scene.title));
    window->setWindowFlag(Qt::FramelessWindowHint, scene.titleBar == TitleBar::hidden);
    window->setFixedSize(scene.width, scene.height);
    auto* layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content.release());
    if (scene.placement == Placement::centred) {
        const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
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
    if (!entry.window) {
        entry.window = makeWindow(entry.scene, entry.makeContent());
        entry.window->setPalette(palette_);
    }
    // Not every window manager takes showing or activating for unminimising.
    entry.window->setWindowState(entry.window->windowState() & ~Qt::WindowMinimized);
    entry.window->show();
    entry.window->raise();
    entry.window->activateWindow();
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
    return found == scenes_.end() ? nullptr : found->second.window.data();
}

} // namespace tidewell
