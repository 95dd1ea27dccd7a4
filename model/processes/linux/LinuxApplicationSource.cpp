#include "model/processes/linux/LinuxApplicationSource.h"

#include "base/runtime/Waiting.h"
#include "base/text/UserLocale.h"
#include "model/processes/linux/ProcessTable.h"

#include <unistd.h>

namespace tidewell {

LinuxApplicationSource::Settings LinuxApplicationSource::usualSettings() {
    return {.dataFolders = usualDataFolders(),
            .locale = userLocale(LocaleCategory::messages),
            .user = geteuid()};
}

LinuxApplicationSource::LinuxApplicationSource(const Settings& settings, Executor& worker, Log& log)
    : table_(std::make_shared<ProcessTable>(
          settings.processFolder, settings.user,
          std::make_unique<DesktopEntries>(settings.dataFolders, entryLanguages(settings.locale),
                                           log)))
    , worker_(worker) {}

Task<ApplicationList> LinuxApplicationSource::runningApplications() {
    return look(table_, &worker_);
}

Task<ApplicationList> LinuxApplicationSource::look(std::shared_ptr<ProcessTable> table,
                                                   Executor* worker) {
    ApplicationList applications;
    auto work = runOn(*worker, [table, &applications] { applications = table->look(); });
    co_await work;
    co_return applications;
}

void LinuxApplicationSource::rest() {
    worker_.post([table = table_] { table->forget(); });
}

} // namespace tidewell
