#include "app/processes/AppMemoryView.h"

#include "app/lists/ShowItemList.h"
#include "app/panel/AnchorPoint.h"
#include "app/processes/AppMemoryPlacement.h"
#include "app/processes/WindowAndPositionReader.h"
#include "base/text/IntegerText.h"
#include "base/values/LevelColours.h"
#include "model/preferences/StoredPreferences.h"
#include "ui/Labels.h"
#include "ui/TitledBox.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

#include <iterator>

namespace tidewell {

namespace {

constexpr int listWidth = 380;
constexpr int listHeight = 350;
constexpr int noteMargin = 28;

QList<QRect> screens() {
    QList<QRect> places;
    for (const QScreen* screen : QGuiApplication::screens()) { // the main one is the first
        places.push_back(screen->geometry());
    }
    return places;
}

} // namespace

AppMemoryView::AppMemoryView(Environment environment)
    : environment_(std::move(environment))
    , content_(makeContent())
    , box_(new TitledBox({}, content_))
    , positionReader_(new WindowAndPositionReader(
          [view = QPointer<AppMemoryView>(this)](QWidget* window) {
              if (view && window != nullptr) {
                  view->place(window);
              }
          },
          [](QPointF) {}, this)) {
    content_->setFixedSize(listWidth, listHeight);
    box_->setContentMargins({});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(box_, 0, Qt::AlignHCenter | Qt::AlignTop);
    setFocusProxy(content_);
    watching_ = environment_.memoryManager->objectWillChange([this] { later_.schedule(); });
}

QWidget* AppMemoryView::makeContent() {
    if (environment_.processesAreHidden) {
        auto* const note =
            makeSecondaryLabel(tr("A sandbox hides the other programs from this one. Installed "
                                  "without a sandbox, it shows their memory here."),
                               TextStyle::body);
        note->setWordWrap(true);
        note->setMargin(noteMargin);
        note->setFocusPolicy(Qt::StrongFocus);
        return note;
    }
    list_ = new ShowItemList(ShowItemList::Kind::processes);
    list_->setAccessibleName(tr("Processes"));
    list_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return list_;
}

void AppMemoryView::place(QWidget* window) const {
    const Data stored = readForView(environment_.defaults, preferences::auxiliaryWindowPos);
    const QPointF anchor = decodePoint(stored).value_or(QPointF());
    window->move(appMemoryPosition(anchor, window->frameGeometry().size(), environment_.panelWidth,
                                   screens()));
}

void AppMemoryView::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        place(window()); // before it is to be seen, so that it does not jump
        content_->setFocus();
        if (list_ != nullptr) {
            environment_.memoryManager->startPeriodicTask();
        }
        refresh();
    }
    QWidget::showEvent(event);
}

void AppMemoryView::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) {
        environment_.memoryManager->stopPeriodicTask();
    }
    QWidget::hideEvent(event);
}

void AppMemoryView::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    if (isVisible()) {
        environment_.dismissWindow();
    }
}

void AppMemoryView::resizeEvent(QResizeEvent* event) {
    positionReader_->setGeometry(rect());
    QWidget::resizeEvent(event);
}

void AppMemoryView::refresh() {
    if (list_ == nullptr) {
        box_->setTitle(tr("Processes"));
        return;
    }
    const auto& processes = environment_.memoryManager->allProcesses();
    box_->setTitle(tr("Processes Real Mem [%1]")
                       .arg(QString::fromStdString(integerText(std::ssize(processes)))));
    const MemoryWatcher& watcher = *environment_.memoryWatcher;
    list_->setSwapMark(watcher.swapUsed() == 0
                           ? SwapMark()
                           : SwapMark{.above = watcher.swapUsed() / 10,
                                      .colour = levelColour(watcher.warningLevel())});
    list_->setItems(processes);
}

} // namespace tidewell
