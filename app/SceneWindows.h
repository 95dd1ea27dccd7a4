#pragma once

#include "app/Scenes.h"

#include <QObject>
#include <QPalette>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <map>
#include <memory>

namespace tidewell {

/// Opens and closes the program's windows by the identifiers of their scenes; of each scene there
/// is at most one window. A window's content is made when it opens and goes when it closes.
/// Main thread.
class SceneWindows {
public:
    /// Makes the content of a window; the window owns it.
    using MakeContent = std::function<std::unique_ptr<QWidget>()>;

    /// `adopt` gets each window that belongs to the panel before it is shown.
    explicit SceneWindows(std::function<void(QWidget& window)> adopt)
        : adopt_(std::move(adopt)) {}
    SceneWindows(const SceneWindows&) = delete;
    SceneWindows& operator=(const SceneWindows&) = delete;
    ~SceneWindows();

    /// From now on the scene can be opened.
    void add(WindowScene scene, MakeContent makeContent);

    /// Shows the scene's window, which must have been added, if it is not open.
    void openWindow(SceneIdentifier identifier);

    /// Makes the scene's window the active one, in front of all others, if it is open.
    void bringWindowToFront(SceneIdentifier identifier) const;

    /// Opens the scene's window and brings it to the front a moment later.
    void openAuxiliaryWindow(SceneIdentifier identifier);

    /// Closes the scene's window, if it is open.
    void dismissWindow(SceneIdentifier identifier) const;

    /// Gives `palette` to every window, open or not.
    void setPalette(const QPalette& palette);

    /// The scene's window, or null while it is closed.
    QWidget* window(SceneIdentifier identifier) const;

private:
    struct Entry {
        WindowScene scene;
        MakeContent makeContent;
        QPointer<QWidget> window;
    };
    std::function<void(QWidget& window)> adopt_;
    std::map<SceneIdentifier, Entry> scenes_;
    QPalette palette_;
    QObject context_; // of the timers
};

} // namespace tidewell
