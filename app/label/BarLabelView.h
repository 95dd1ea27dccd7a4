#pragma once

#include "base/runtime/Executor.h"
#include "desktop/statusitem/StatusItem.h"
#include "model/memory/MemoryWatcher.h"
#include "model/updates/SparkleModel.h"

#include <QCoreApplication>

#include <string_view>

namespace tidewell {

/// The name of the symbol, see ui/Symbols.h.
std::string_view symbolName(std::uint64_t swapUsed);

/// For example "1.2 GB of 8 GB"; "No Swap", translated, where none is used. Both in bytes.
std::string labelText(std::uint64_t swapUsed, std::uint64_t swapTotal);

/// Whether the update mark replaces the symbol of the swap in use.
constexpr bool showsUpdateMark(bool isUpdateAvailable) {
    return isUpdateAvailable;
}

/// The status item's content: the symbol in the colour of the warning level, and the swap in use.
/// Sets it at most once for all the changes of one event-loop pass. Main thread.
class BarLabelView final {
    Q_DECLARE_TR_FUNCTIONS(BarLabelView)

public:
    /// `sparkleModel` may be null: then there are no updates. All must outlive the view.
    BarLabelView(SparkleModel* sparkleModel, MemoryWatcher& memoryWatcher, Executor& mainThread,
                 StatusItem& statusItem);

    /// Shows the label, follows the models from now on, and has updates checked for.
    void appear();

private:
    void markDirty();
    void draw();

    SparkleModel* sparkleModel_;
    MemoryWatcher& memoryWatcher_;
    Executor& mainThread_;
    StatusItem& statusItem_;

    WarningLevel seenLevel_ = WarningLevel::none;
    Colour warningColor_ = colours::primary; // until the level changes for the first time
    std::optional<std::pair<std::uint64_t, std::uint64_t>> shownSwap_; // used, total
    StatusItemContent content_;
    std::shared_ptr<bool> isDirty_; // shared with the queued drawing, which may outlive the view
    Subscription memoryChanges_;
    Subscription updateChanges_;
};

} // namespace tidewell
