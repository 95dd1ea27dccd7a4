#pragma once

#include "base/ports/UserDefaults.h"
#include "model/memory/MemoryWatcher.h"
#include "model/processes/MemoryManager.h"
#include "ui/LaterRefresh.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace tidewell {

class ShowItemList;
class TitledBox;

/// The content of the process window: the running applications, the largest first. Those that hold
/// more than a tenth of the swap in use say so. The survey runs while it is shown. It puts its
/// window beside the panel, and asks for its dismissal when the pointer leaves it. Main thread.
class AppMemoryView final : public QWidget {
    Q_OBJECT

public:
    /// What is referred to must outlive the view.
    struct Environment {
        std::shared_ptr<MemoryManager> memoryManager;
        std::shared_ptr<const MemoryWatcher> memoryWatcher; ///< knows how much swap is in use
        const UserDefaults& defaults;                       ///< knows where the panel is
        std::function<void()> dismissWindow;
        double panelWidth; ///< points
        /// Other programs' processes are out of sight: that is said in the place of the list.
        bool processesAreHidden = false;
    };

    explicit AppMemoryView(Environment environment);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makeContent();
    void place(QWidget* window) const;
    void refresh();

    Environment environment_;
    // Owned by the view.
    ShowItemList* list_ = nullptr; ///< null where processes are hidden
    QWidget* content_;
    TitledBox* box_;
    QWidget* positionReader_;
    LaterRefresh later_{*this, [this] { refresh(); }};
    Subscription watching_;
};

} // namespace tidewell
