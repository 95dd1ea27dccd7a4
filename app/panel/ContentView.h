#pragma once

#include "app/SceneWindows.h"
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
class QPushButton;
class QStackedWidget;

namespace tidewell {

class LinearGauge;
class RoundGauge;
class ScrollingBarChart;
class ScrollingBarChartFixed;
class ShowItemList;
class TitledBox;

/// The content of the main panel. Reads the models only while it is visible: when it appears, and
/// then at most once for all the changes of one event-loop pass. Main thread.
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
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeToolbar();
    QWidget* makeGaugesRow();
    QWidget* makeGeneralBox();
    QWidget* makeSwapBox();
    QWidget* makeSwapHistory();
    QWidget* makePressureHistory();

    void applyPalette();
    void refresh();
    void refreshPrompts();
    void refreshSwap();
    void recordPosition();
    void askForPermission();
    static Task<void> askForPermission(std::shared_ptr<NotificationManager> manager,
                                       QPointer<ContentView> view);
    void showNotificationSettings();
    void openAppMemory();
    void dismissAppMemory() const;

    Environment environment_;
    bool checkIfNotificationsAreAllowed_ = false;
    LaterRefresh later_{*this, [this] { refresh(); }};

    // Owned by the view, in the order in which the keyboard goes through them.
    QWidget* toolbar_;
    QLabel* title_;
    QPushButton* notificationPrompt_;
    QPushButton* updatePrompt_;
    QWidget* gaugesRow_ = nullptr;
    RoundGauge* pressureGauge_ = nullptr;
    RoundGauge* usageGauge_ = nullptr;
    TitledBox* generalBox_ = nullptr;
    ShowItemList* list_ = nullptr;
    QStackedWidget* swapState_ = nullptr; ///< the text that there is none, or the gauge
    LinearGauge* swapGauge_ = nullptr;
    QStackedWidget* swapHistory_ = nullptr; ///< the picture that there is none, or the chart
    ScrollingBarChart* swapChart_ = nullptr;
    ScrollingBarChartFixed* pressureChart_ = nullptr;
    QPointer<QWidget> positionReader_; ///< the window's, of the present appearance

    Subscription watching_;
    Subscription watchingUpdates_;
};

} // namespace tidewell
