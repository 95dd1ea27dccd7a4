#pragma once

#include <QWidget>

#include <functional>
#include <string_view>

class QKeySequence;

namespace tidewell {

class SceneWindows;

/// The three buttons in the panel's corner: about, settings, quit. Main thread.
class PanelToolbar final : public QWidget {
    Q_OBJECT

public:
    /// `windows` must outlive the toolbar.
    PanelToolbar(const QString& applicationName, SceneWindows& windows,
                 const std::function<void()>& confirmQuit, QWidget* parent);

private:
    void add(std::string_view symbol, const QString& name, const QString& help,
             const QKeySequence& keys, const std::function<void()>& action);
};

} // namespace tidewell
