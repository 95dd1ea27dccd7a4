#include "app/panel/SwapSection.h"

#include "app/panel/ScrollingBarChart.h"
#include "base/text/ByteText.h"
#include "base/text/IntegerText.h"
#include "base/values/LevelColours.h"
#include "ui/Labels.h"
#include "ui/LevelWords.h"
#include "ui/LinearGauge.h"
#include "ui/Pictures.h"
#include "ui/TitledBox.h"

#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace tidewell {

namespace {

constexpr int boxHeight = 64;
constexpr int historyHeight = 126;
constexpr double barWidth = 22.1;
constexpr double barSpacing = 1;

} // namespace

SwapSection::SwapSection(std::shared_ptr<MemoryWatcher> memoryWatcher, int width, int spacing,
                         const std::function<void()>& entered)
    : memoryWatcher_(std::move(memoryWatcher)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    layout->addWidget(makeBox(width, entered));
    layout->addWidget(makeHistory(width));
}

QWidget* SwapSection::makeBox(int width, const std::function<void()>& entered) {
    gauge_ = new LinearGauge;
    gauge_->setAccessibleName(tr("Swap"));
    state_ = new QStackedWidget;
    state_->addWidget(makeLabel(tr("No swap memory used."), TextStyle::body));
    state_->addWidget(gauge_);
    box_ = new TitledBox(tr("Swap"), state_);
    box_->setContentMargins({12, 4, 12, 4});
    box_->setFixedSize(width, boxHeight);
    box_->onHover([entered](bool isInside) {
        if (isInside) {
            entered();
        }
    });
    return box_;
}

QWidget* SwapSection::makeHistory(int width) {
    chart_ = new ScrollingBarChart(memoryWatcher_, {}, barWidth, barSpacing);
    chartBox_ = new TitledBox(tr("Swap Usage"), chart_);
    chartBox_->setContentMargins({0, 3, 0, 3});
    auto* noWarning = new PictureView(drawNoWarning);
    noWarning->setAccessibleName(tr("No swap memory used."));
    history_ = new QStackedWidget;
    history_->setFixedSize(width, historyHeight);
    history_->addWidget(noWarning);
    history_->addWidget(chartBox_);
    return history_;
}

void SwapSection::refresh() {
    const Use use{.used = memoryWatcher_->swapUsed(),
                  .total = memoryWatcher_->swapTotal(),
                  .level = memoryWatcher_->warningLevel()};
    if (std::exchange(shown_, use) != use) {
        show(use);
    }
    if (use.used != 0) {
        chart_->setData(memoryWatcher_->swapUsedArray());
        chartBox_->setNote(chart_->spanText());
    }
}

void SwapSection::show(const Use& use) {
    const auto& [used, total, level] = use;
    if (used != 0) {
        const QString usedText = QString::fromStdString(sizeText(used));
        const QString totalText = QString::fromStdString(sizeText(total));
        gauge_->setContent({.value = static_cast<double>(used),
                            .maximum = static_cast<double>(total),
                            .text = usedText,
                            .minimumText = QString::fromStdString(integerText(0) + " MB"),
                            .maximumText = totalText,
                            .tint = levelColour(level)});
        gauge_->setToolTip(withLevel(tr("%1 of %2").arg(usedText, totalText), level));
    }
    box_->setNote(used != 0 ? levelWord(level) : QString());
    state_->setCurrentIndex(used != 0 ? 1 : 0);
    history_->setCurrentIndex(used != 0 ? 1 : 0);
}

} // namespace tidewell
