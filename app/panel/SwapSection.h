#pragma once

#include "model/memory/MemoryWatcher.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QStackedWidget;

namespace tidewell {

class LinearGauge;
class ScrollingBarChart;
class TitledBox;

/// What the panel shows of swap: the box with its use, and below it the history, or a picture while
/// none is in use. Main thread.
class SwapSection final : public QWidget {
    Q_OBJECT

public:
    /// `spacing` lies between the two, in points. `entered` is called when the pointer comes over
    /// the upper one.
    SwapSection(std::shared_ptr<MemoryWatcher> memoryWatcher, int width, int spacing,
                const std::function<void()>& entered);

    /// Shows what the watcher knows now.
    void refresh();

private:
    struct Use {
        std::uint64_t used; // bytes
        std::uint64_t total;
        WarningLevel level;
        bool operator==(const Use&) const = default;
    };

    void show(const Use& use);
    QWidget* makeBox(int width, const std::function<void()>& entered);
    QWidget* makeHistory(int width);

    std::shared_ptr<MemoryWatcher> memoryWatcher_;
    std::optional<Use> shown_;
    TitledBox* box_ = nullptr;
    QStackedWidget* state_ = nullptr; ///< the text that there is none, or the gauge
    LinearGauge* gauge_ = nullptr;
    QStackedWidget* history_ = nullptr; ///< the picture that there is none, or the chart
    TitledBox* chartBox_ = nullptr;
    ScrollingBarChart* chart_ = nullptr;
};

} // namespace tidewell
