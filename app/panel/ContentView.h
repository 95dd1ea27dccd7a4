#pragma once

#include "base/ports/Bundle.h"
#include "base/ports/UserDefaults.h"
#include "base/runtime/Executor.h"
#include "base/runtime/Task.h"
#include "model/memory/MemoryWatcher.h"
#include "model/notifications/NotificationManager.h"
#include "model/updates/SparkleModel.h"
#include "ui/LaterRefresh.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

class QLabel;

namespace tidewell {

class GaugesRow;
class PanelPrompts;
class SceneWindows;
class ScrollingBarChartFixed;
class ShowItemList;
class SwapSection;
class TitledBox;

/// The height of the panel's list of figures in points. The prompts above it take from it.
constexpr int listHeight(bool checkIfNotificationsAreAllowed, bool isUpdateAvailable) {
    return (checkIfNotificationsAreAllowed ? 165 : 205) - (isUpdateAvailable ? 40 : 0);
}

/// The content of the main panel: lays its parts out, and hands them what the models say. Reads the
/// models only while it is visible: when it appears, and then at most once for all the changes of
/// one event-loop pass. Main thread.
class ContentView final : public QWidget {
    Q_OBJECT

public:
    /// What is referred to must outlive the view.
    struct Environment {
        std::shared_ptr<MemoryWatcher> memoryWatcher;
        std::shared_ptr<NotificationManager> notificationManager;
        std::shared_ptr<SparkleModel> sparkleModel; ///< null where there are no updates
        UserDefaults& defaults;
        Executor& mainThread;
        const Bundle& bundle;
        SceneWindows& windows;
        std::function<void()> confirmQuit;
        /// Opens the desktop's notification settings; false where it has none.
        std::function<bool()> openNotificationSettings;
    };

    explicit ContentView(Environment environment);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeGeneralBox();
    QWidget* makePressureHistory();

    void refresh();
    void refreshPrompts();
    void refreshList();
    void recordPosition();
    void askForPermission();
    static Task<void> askForPermission(std::shared_ptr<NotificationManager> manager,
                                       QPointer<ContentView> view);
    void openAppMemory();
    void dismissAppMemory() const;

    Environment environment_;
    bool checkIfNotificationsAreAllowed_ = false;
    LaterRefresh later_{*this, [this] { refresh(); }};

    // Owned by the view, in the order in which the keyboard goes through them.
    QWidget* toolbar_;
    QLabel* title_;
    PanelPrompts* prompts_;
    GaugesRow* gauges_;
    ShowItemList* list_ = nullptr;
    TitledBox* generalBox_ = nullptr;
    SwapSection* swap_;
    TitledBox* pressureBox_ = nullptr;
    ScrollingBarChartFixed* pressureChart_ = nullptr;
    QPointer<QWidget> positionReader_; ///< the window's, of the present appearance

    Subscription watching_;
    Subscription watchingUpdates_;
};

} // namespace tidewell
