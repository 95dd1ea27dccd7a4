#pragma once

#include "core/MemoryWatcher.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class QLabel;
class QGridLayout;

namespace tidewell {

/// The content of the main panel: title, the list of figures and Quit. Reads the models only while
/// it is visible. Main thread.
class ContentView final : public QWidget {
public:
    ContentView(std::shared_ptr<MemoryWatcher> memoryWatcher, const std::string& applicationName,
                std::function<void()> quit);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void scheduleRefresh();
    void refresh();

    std::shared_ptr<MemoryWatcher> memoryWatcher_;
    QGridLayout* figures_;
    std::vector<std::pair<QLabel*, QLabel*>> rows_; ///< name and value; owned by the layout
    bool refreshScheduled_ = false;
    Subscription watching_;
};

} // namespace tidewell
