#include "app/label/BarLabelView.h"

#include "base/text/ByteText.h"
#include "base/values/LevelColours.h"
#include "ui/LevelWords.h"

namespace tidewell {

std::string_view symbolName(std::uint64_t swapUsed) {
    return swapUsed != 0 ? "circle.fill" : "circle.dotted";
}

std::string labelText(std::uint64_t swapUsed, std::uint64_t swapTotal) {
    if (swapUsed == 0) {
        return BarLabelView::tr("No Swap").toStdString();
    }
    return sizeText(swapUsed) + " of " + sizeText(swapTotal);
}

BarLabelView::BarLabelView(SparkleModel* sparkleModel, MemoryWatcher& memoryWatcher,
                           Executor& mainThread, StatusItem& statusItem)
    : sparkleModel_(sparkleModel)
    , memoryWatcher_(memoryWatcher)
    , mainThread_(mainThread)
    , statusItem_(statusItem) {}

void BarLabelView::appear() {
    seenLevel_ = memoryWatcher_.warningLevel();
    isDirty_ = std::make_shared<bool>(false);
    memoryChanges_ = memoryWatcher_.objectWillChange([this] { markDirty(); });
    if (sparkleModel_ != nullptr) {
        updateChanges_ = sparkleModel_->objectWillChange([this] { markDirty(); });
    }
    draw();
    if (sparkleModel_ != nullptr) {
        sparkleModel_->scheduleUpdateChecks();
    }
}

void BarLabelView::markDirty() {
    if (std::exchange(*isDirty_, true)) {
        return;
    }
    mainThread_.post([this, weak = std::weak_ptr(isDirty_)] {
        if (const auto isDirty = weak.lock()) {
            *isDirty = false;
            draw();
        }
    });
}

void BarLabelView::draw() {
    const WarningLevel level = memoryWatcher_.warningLevel();
    if (level != seenLevel_) {
        seenLevel_ = level;
        warningColor_ = levelColour(level);
    }
    const std::pair swap(memoryWatcher_.swapUsed(), memoryWatcher_.swapTotal());
    if (shownSwap_ != swap) {
        shownSwap_ = swap;
        content_.text = labelText(swap.first, swap.second);
    }
    content_.description = withLevel(QString::fromStdString(content_.text), level).toStdString();
    const bool isMarked =
        sparkleModel_ != nullptr && showsUpdateMark(sparkleModel_->isUpdateAvailable());
    content_.symbolName = isMarked ? "exclamationmark.triangle" : symbolName(swap.first);
    content_.colour = isMarked ? colours::primary : warningColor_;
    statusItem_.setContent(content_);
}

} // namespace tidewell
