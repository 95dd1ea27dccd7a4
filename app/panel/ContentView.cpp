#include "app/panel/ContentView.h"

#include "app/SceneWindows.h"
#include "app/lists/ShowItemList.h"
#include "app/panel/AnchorPoint.h"
#include "app/panel/GaugesRow.h"
#include "app/panel/PanelPrompts.h"
#include "app/panel/PanelToolbar.h"
#include "app/panel/ScrollingBarChartFixed.h"
#include "app/panel/SwapSection.h"
#include "app/processes/WindowAndPositionReader.h"
#include "base/ports/Bundle.h"
#include "model/memory/Translatable.h"
#include "model/preferences/StoredPreferences.h"
#include "ui/Labels.h"
#include "ui/TitledBox.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

#include <utility>

namespace tidewell {

namespace {

constexpr int componentWidth = 300;
constexpr int betweenItems = 6;
constexpr int boxMargin = 4;
constexpr int topMargin = 20;
constexpr int leastMargin = 8;
constexpr int titleHeight = 24;

constexpr int titleBottomPadding(bool checkIfNotificationsAreAllowed) {
    return checkIfNotificationsAreAllowed ? 0 : 15;
}

std::string translatedFigure(const std::string& name) {
    return QCoreApplication::translate(modelContext, name.c_str()).toStdString();
}

} // namespace

ContentView::ContentView(Environment environment)
    : environment_(std::move(environment)) {
    const QString name = QString::fromStdString(applicationName(environment_.bundle));
    toolbar_ = new PanelToolbar(name, environment_.windows, environment_.confirmQuit, this);
    title_ = makeLabel(name, TextStyle::title);
    prompts_ =
        new PanelPrompts(name, {.openNotificationSettings = environment_.openNotificationSettings,
                                .checkForUpdates = [model = environment_.sparkleModel] {
                                    if (SPUUpdater* updater = model->updater()) {
                                        updater->checkForUpdates();
                                    }
                                }});
    gauges_ = new GaugesRow(componentWidth, [this] { dismissAppMemory(); });
    swap_ = new SwapSection(environment_.memoryWatcher, componentWidth, betweenItems,
                            [this] { dismissAppMemory(); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, leastMargin, 0, 6);
    layout->setSpacing(0);
    // On low screens, this and what is above the copyright are the first to go.
    layout->addItem(
        new QSpacerItem(0, topMargin - leastMargin, QSizePolicy::Minimum, QSizePolicy::Maximum));
    layout->addWidget(title_);
    layout->addWidget(prompts_);
    for (QWidget* item :
         std::initializer_list<QWidget*>{gauges_, makeGeneralBox(), swap_, makePressureHistory()}) {
        layout->addWidget(item, 0, Qt::AlignHCenter);
        layout->addSpacing(betweenItems);
    }
    layout->addStretch();
    layout->addWidget(makeSecondaryLabel(QString::fromStdString(copyright(environment_.bundle)),
                                         TextStyle::footnote));

    watching_ = environment_.memoryWatcher->objectWillChange([this] { later_.schedule(); });
    if (environment_.sparkleModel) {
        watchingUpdates_ =
            environment_.sparkleModel->objectWillChange([this] { later_.schedule(); });
    }
}

QWidget* ContentView::makeGeneralBox() {
    list_ = new ShowItemList;
    list_->setAccessibleName(tr("General"));
    list_->setAutoFillBackground(true); // opaque, so that the box below is not painted again
    list_->installEventFilter(this);
    generalBox_ = new TitledBox(tr("General"), list_);
    generalBox_->setFixedWidth(componentWidth);
    generalBox_->onHover([this](bool entered) {
        list_->setHighlighted(entered);
        if (entered) {
            openAppMemory();
        }
    });
    return generalBox_;
}

QWidget* ContentView::makePressureHistory() {
    constexpr int height = 100;
    pressureChart_ = new ScrollingBarChartFixed(height, {}, 3, 0, {.value = 0, .timestamp = 0});
    pressureBox_ = new TitledBox(tr("Memory Pressure"), pressureChart_);
    pressureBox_->setContentMargins({0, boxMargin, 0, boxMargin});
    pressureBox_->setFixedWidth(componentWidth);
    return pressureBox_;
}

void ContentView::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        refresh();
        recordPosition();
        askForPermission();
        if (environment_.sparkleModel) {
            environment_.sparkleModel->scheduleUpdateChecks();
        }
    }
    QWidget::showEvent(event);
}

void ContentView::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) {
        dismissAppMemory();
    }
    QWidget::hideEvent(event);
}

void ContentView::resizeEvent(QResizeEvent* event) {
    const QRect place(QPoint(width() - toolbar_->width() - 6, 8), toolbar_->size());
    toolbar_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    toolbar_->raise();
    QWidget::resizeEvent(event);
}

bool ContentView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
            openAppMemory();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ContentView::refresh() {
    const MemoryWatcher& watcher = *environment_.memoryWatcher;
    refreshPrompts();
    gauges_->setContent(watcher.memoryPressure(), watcher.usedMemoryPercentage());
    refreshList();
    swap_->refresh();
    pressureChart_->setData(watcher.memoryPressureArray());
    pressureBox_->setNote(pressureChart_->spanText());
}

void ContentView::refreshPrompts() {
    const bool update = environment_.sparkleModel && environment_.sparkleModel->isUpdateAvailable();
    const int padding = titleBottomPadding(checkIfNotificationsAreAllowed_);
    title_->setContentsMargins(0, 0, 0, padding);
    title_->setFixedHeight(titleHeight + padding);
    prompts_->setShown(checkIfNotificationsAreAllowed_, update);
    generalBox_->setFixedHeight(TitledBox::titleHeight + 2 * boxMargin +
                                listHeight(checkIfNotificationsAreAllowed_, update));
}

void ContentView::refreshList() {
    std::vector<DisplayContainer> rows;
    for (const ShowItem& item : environment_.memoryWatcher->showItems()) {
        rows.push_back({.showItem = item, .image = std::nullopt});
        rows.back().showItem.label = translatedFigure(item.label);
    }
    list_->setItems(std::move(rows));
}

void ContentView::recordPosition() {
    // Along the lower edge of the panel, which may show less than all of this view.
    QWidget* const panel = window();
    delete positionReader_.data();
    positionReader_ = new WindowAndPositionReader(
        [](QWidget*) {},
        [&defaults = environment_.defaults](QPointF position) {
            if (auto encoded = encodePoint(position)) {
                // A disk that is busy with swap would hold up the panel.
                writeLater(defaults, preferences::auxiliaryWindowPos, std::move(*encoded));
            }
        },
        panel);
    positionReader_->setGeometry(0, panel->height(), panel->width(), 0);
    positionReader_->show();
}

void ContentView::askForPermission() {
    spawn(environment_.mainThread, askForPermission(environment_.notificationManager, this));
}

Task<void> ContentView::askForPermission(std::shared_ptr<NotificationManager> manager,
                                         QPointer<ContentView> view) {
    const bool allowed = co_await manager->requestPermission();
    if (view) {
        view->checkIfNotificationsAreAllowed_ = !allowed;
        view->later_.schedule();
    }
}

void ContentView::openAppMemory() {
    environment_.windows.openAuxiliaryWindow(SceneIdentifier::appMemory);
}

void ContentView::dismissAppMemory() const {
    environment_.windows.dismissWindow(SceneIdentifier::appMemory);
}

} // namespace tidewell
