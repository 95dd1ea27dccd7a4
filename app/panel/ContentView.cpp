#include "app/panel/ContentView.h"

#include "app/Scenes.h"
#include "app/lists/ShowItemList.h"
#include "app/panel/AnchorPoint.h"
#include "app/panel/PanelRules.h"
#include "app/panel/ScrollingBarChart.h"
#include "app/panel/ScrollingBarChartFixed.h"
#include "app/processes/WindowAndPositionReader.h"
#include "base/ports/BundleInformation.h"
#include "base/text/ByteText.h"
#include "base/text/IntegerText.h"
#include "base/values/LevelColours.h"
#include "model/preferences/StoredPreferences.h"
#include "ui/Fonts.h"
#include "ui/Labels.h"
#include "ui/LinearGauge.h"
#include "ui/Palette.h"
#include "ui/Pictures.h"
#include "ui/PushButton.h"
#include "ui/RoundGauge.h"
#include "ui/SymbolButton.h"
#include "ui/TitledBox.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QStyle>
#include <QVBoxLayout>

#include <utility>

namespace tidewell {

namespace {

constexpr int componentWidth = 300;
constexpr int betweenItems = 6;
constexpr int boxMargin = 4;
constexpr int promptHeight = 25;
constexpr int titleHeight = 24;
constexpr int gaugesRowHeight = 92;
constexpr int captionHeight = 18;
constexpr int toolbarButton = 26;
constexpr int gaugeCentre =
    82; // to both sides of the middle: 110 between columns as wide as an arc

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

QString integer(std::int64_t value) {
    return text(integerText(value));
}

std::string translatedFigure(const std::string& name) {
    return QCoreApplication::translate("MemoryWatcher", name.c_str()).toStdString();
}

/// A prompt in the middle of a row of its own, which is what is hidden with it.
QPushButton* makePrompt(const QString& title) {
    auto* prompt = new PushButton(title);
    prompt->setFont(textFont(TextStyle::body, prompt->font()));
    prompt->setFixedHeight(promptHeight);
    prompt->setAutoDefault(true); // takes Return, too
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 15 + betweenItems);
    layout->addWidget(prompt, 0, Qt::AlignHCenter);
    return prompt;
}

RoundGaugeContent percentage(double value, Colour textColour) {
    return {.value = value,
            // Without its fraction. It is finite: it comes of figures that are.
            .text = integer(static_cast<std::int64_t>(value)) + u'%',
            .textColour = textColour,
            .minimumText = integer(0),
            .maximumText = integer(100),
            .minimumTextColour = colours::systemGreen,
            .maximumTextColour = colours::systemRed,
            .gradient = gaugeGradient(value)};
}

} // namespace

ContentView::ContentView(Environment environment)
    : environment_(std::move(environment))
    , toolbar_(makeToolbar())
    , title_(makeLabel(text(applicationName(environment_.bundle)), TextStyle::title))
    , notificationPrompt_(makePrompt(tr("Press to set Allow Notifications")))
    , updatePrompt_(makePrompt(tr("Update available!"))) {
    applyPalette();
    connect(notificationPrompt_, &QPushButton::clicked, this,
            &ContentView::showNotificationSettings);
    connect(updatePrompt_, &QPushButton::clicked, this, [this] {
        if (SPUUpdater* updater = environment_.sparkleModel->updater()) {
            updater->checkForUpdates();
        }
    });
    auto* copyrightLine =
        makeSecondaryLabel(text(copyright(environment_.bundle)), TextStyle::footnote);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 20, 0, 6);
    layout->setSpacing(0);
    layout->addWidget(title_);
    layout->addWidget(notificationPrompt_->parentWidget());
    layout->addWidget(updatePrompt_->parentWidget());
    for (QWidget* item : {makeGaugesRow(), makeGeneralBox(), makeSwapBox(), makeSwapHistory(),
                          makePressureHistory()}) {
        layout->addWidget(item, 0, Qt::AlignHCenter);
        layout->addSpacing(betweenItems);
    }
    layout->addStretch();
    layout->addWidget(copyrightLine);
    setMinimumHeight(panelHeight);

    watching_ = environment_.memoryWatcher->objectWillChange([this] { later_.schedule(); });
    if (environment_.sparkleModel) {
        watchingUpdates_ =
            environment_.sparkleModel->objectWillChange([this] { later_.schedule(); });
    }
}

QWidget* ContentView::makeToolbar() {
    auto* toolbar = new QWidget(this);
    auto* layout = new QHBoxLayout(toolbar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    const QString name = text(applicationName(environment_.bundle));
    const auto add = [layout](std::string_view symbol, const QString& help,
                              const QKeySequence& keys, const auto& action) {
        auto* button = new SymbolButton(symbol, help);
        button->setFixedSize(toolbarButton, toolbarButton);
        button->setToolTip(help);
        if (!keys.isEmpty()) {
            // In the program's other windows, too: the pointer may have made one the active one.
            auto* shortcut = new QShortcut(keys, button);
            shortcut->setContext(Qt::ApplicationShortcut);
            connect(shortcut, &QShortcut::activated, button, &SymbolButton::animateClick);
        }
        connect(button, &SymbolButton::clicked, button, action);
        layout->addWidget(button);
    };
    const QKeySequence settingsKeys(Qt::CTRL | Qt::Key_Comma);
    const QKeySequence quitKeys(Qt::CTRL | Qt::Key_Q);
    SceneWindows& windows = environment_.windows;
    add("info.circle", tr("About %1").arg(name), {},
        [&windows] { windows.openAuxiliaryWindow(SceneIdentifier::about); });
    add("gear", tr("Go to Settings - %1").arg(settingsKeys.toString(QKeySequence::NativeText)),
        settingsKeys, [&windows] { windows.openAuxiliaryWindow(SceneIdentifier::settings); });
    add("power", tr("Quit %1 - %2").arg(name, quitKeys.toString(QKeySequence::NativeText)),
        quitKeys, environment_.confirmQuit);
    toolbar->adjustSize();
    return toolbar;
}

QWidget* ContentView::makeGaugesRow() {
    gaugesRow_ = new QWidget;
    gaugesRow_->setFixedSize(componentWidth, gaugesRowHeight);
    gaugesRow_->installEventFilter(this);
    const auto add = [this](int centre, const QString& caption) {
        auto* gauge = new RoundGauge(gaugesRow_);
        gauge->setAccessibleName(caption);
        gauge->resize(gauge->sizeHint());
        gauge->move(centre - gauge->width() / 2, 0);
        QLabel* label = makeLabel(caption, TextStyle::body);
        label->setParent(gaugesRow_);
        label->setGeometry(centre - gaugeCentre, gaugesRowHeight - captionHeight, 2 * gaugeCentre,
                           captionHeight);
        return gauge;
    };
    constexpr int middle = componentWidth / 2;
    const int sign = isRightToLeft() ? -1 : 1;
    pressureGauge_ = add(middle - sign * gaugeCentre, tr("Pressure"));
    usageGauge_ = add(middle + sign * gaugeCentre, tr("Memory Usage"));
    return gaugesRow_;
}

QWidget* ContentView::makeGeneralBox() {
    list_ = new ShowItemList;
    list_->setAccessibleName(tr("General"));
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

QWidget* ContentView::makeSwapBox() {
    swapGauge_ = new LinearGauge;
    swapGauge_->setAccessibleName(tr("Swap"));
    swapState_ = new QStackedWidget;
    swapState_->addWidget(makeLabel(tr("No swap memory used."), TextStyle::body));
    swapState_->addWidget(swapGauge_);
    auto* box = new TitledBox(tr("Swap"), swapState_);
    box->setContentMargins({12, boxMargin, 12, boxMargin});
    box->setFixedSize(componentWidth, 64);
    box->onHover([this](bool entered) {
        if (entered) {
            dismissAppMemory();
        }
    });
    return box;
}

QWidget* ContentView::makeSwapHistory() {
    swapChart_ = new ScrollingBarChart(environment_.memoryWatcher, {}, 22.1, 1);
    auto* box = new TitledBox(tr("Swap Usage"), swapChart_);
    box->setContentMargins({0, 3, 0, 3});
    swapHistory_ = new QStackedWidget;
    swapHistory_->setFixedSize(componentWidth, 126);
    auto* noWarning = new PictureView(drawNoWarning);
    noWarning->setAccessibleName(tr("No swap memory used."));
    swapHistory_->addWidget(noWarning);
    swapHistory_->addWidget(box);
    return swapHistory_;
}

QWidget* ContentView::makePressureHistory() {
    constexpr int height = 100;
    pressureChart_ = new ScrollingBarChartFixed(height, {}, 3, 0, {.value = 0, .timestamp = 0});
    auto* box = new TitledBox(tr("Memory Pressure"), pressureChart_);
    box->setContentMargins({0, boxMargin, 0, boxMargin});
    box->setFixedWidth(componentWidth);
    return box;
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

void ContentView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        applyPalette();
    }
    QWidget::changeEvent(event);
}

void ContentView::applyPalette() {
    QPalette prompt;
    prompt.setColor(QPalette::ButtonText,
                    toQColor(textVariant(colours::systemRed), appearanceOf(palette())));
    notificationPrompt_->setPalette(prompt);
}

bool ContentView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == gaugesRow_ && event->type() == QEvent::Enter) {
        dismissAppMemory();
    }
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
    const auto pressure = watcher.memoryPressure();
    pressureGauge_->setContent(percentage(static_cast<double>(pressure), pressureColour(pressure)));
    usageGauge_->setContent(percentage(watcher.usedMemoryPercentage(), colours::primary));

    std::vector<DisplayContainer> rows;
    rows.reserve(watcher.showItems().size());
    for (const ShowItem& item : watcher.showItems()) {
        rows.push_back({.showItem = item, .image = std::nullopt});
        rows.back().showItem.label = translatedFigure(item.label);
    }
    list_->setItems(std::move(rows));
    refreshSwap();
    pressureChart_->setData(watcher.memoryPressureArray());
}

void ContentView::refreshPrompts() {
    const bool update = environment_.sparkleModel && environment_.sparkleModel->isUpdateAvailable();
    const int padding = titleBottomPadding(checkIfNotificationsAreAllowed_);
    title_->setContentsMargins(0, 0, 0, padding);
    title_->setFixedHeight(titleHeight + padding);
    notificationPrompt_->parentWidget()->setVisible(checkIfNotificationsAreAllowed_);
    updatePrompt_->parentWidget()->setVisible(update);
    generalBox_->setFixedHeight(TitledBox::titleHeight + 2 * boxMargin +
                                listHeight(checkIfNotificationsAreAllowed_, update));
}

void ContentView::refreshSwap() {
    const MemoryWatcher& watcher = *environment_.memoryWatcher;
    const bool inUse = watcher.swapUsed() != 0;
    if (inUse) {
        swapGauge_->setContent({.value = static_cast<double>(watcher.swapUsed()),
                                .maximum = static_cast<double>(watcher.swapTotal()),
                                .text = text(sizeText(watcher.swapUsed())),
                                .minimumText = integer(0) + QStringLiteral(" MB"),
                                .maximumText = text(sizeText(watcher.swapTotal())),
                                .tint = levelColour(watcher.warningLevel())});
        swapChart_->setData(watcher.swapUsedArray());
    }
    swapState_->setCurrentIndex(inUse ? 1 : 0);
    swapHistory_->setCurrentIndex(inUse ? 1 : 0);
}

void ContentView::recordPosition() {
    // Along the lower edge of the panel, which may show less than all of this view.
    QWidget* const panel = window();
    delete positionReader_.data();
    positionReader_ = new WindowAndPositionReader(
        [](QWidget*) {},
        [&defaults = environment_.defaults](QPointF position) {
            if (auto encoded = encodePoint(position)) {
                write(defaults, preferences::auxiliaryWindowPos, std::move(*encoded));
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

void ContentView::showNotificationSettings() {
    if (environment_.openNotificationSettings()) {
        return;
    }
    auto* message = new QMessageBox(
        QMessageBox::Information, title_->text(),
        tr("This desktop has no notification settings that %1 can open.").arg(title_->text()),
        QMessageBox::Ok, this);
    message->setInformativeText(tr("Allow its notifications where your desktop keeps them."));
    message->setWindowIcon(applicationIcon());
    message->setAttribute(Qt::WA_DeleteOnClose);
    message->setAttribute(Qt::WA_WindowPropagation);
    message->setWindowFlag(Qt::WindowStaysOnTopHint); // as the panel does
    message->open();
}

void ContentView::openAppMemory() {
    environment_.windows.openAuxiliaryWindow(SceneIdentifier::appMemory);
}

void ContentView::dismissAppMemory() const {
    environment_.windows.dismissWindow(SceneIdentifier::appMemory);
}

} // namespace tidewell
