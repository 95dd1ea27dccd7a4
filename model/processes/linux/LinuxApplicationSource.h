#pragma once

#include "base/ports/Log.h"
#include "base/runtime/Executor.h"
#include "model/processes/ApplicationSource.h"

#include <memory>
#include <string>
#include <vector>

namespace tidewell {

/// The applications of one user of a Linux machine, in the order of their process numbers: of
/// every process that runs an executable, so neither kernel threads nor zombies.
/// `groupByApplication()` says how they are told apart.
class LinuxApplicationSource final : public ApplicationSource {
public:
    struct Settings {
        std::string processFolder = "/proc";
        std::vector<std::string> dataFolders; ///< with desktop entries; the first ones come first
        std::string locale;                   ///< whose names are wanted, as in "de_DE.UTF-8"
        std::uint32_t user;                   ///< whose processes are wanted
    };
    /// Those of the user who runs this program, from the environment.
    static Settings usualSettings();

    /// All files are read on `worker`: with thousands of processes that takes longer than a frame,
    /// and some may keep their reader waiting. It may be destroyed before or after the source;
    /// `log` must outlive both.
    LinuxApplicationSource(const Settings& settings, Executor& worker, Log& log);

    Task<ApplicationList> runningApplications() override;
    void rest() override;

private:
    class ProcessTable;

    static Task<ApplicationList> look(std::shared_ptr<ProcessTable> table, Executor* worker);

    std::shared_ptr<ProcessTable> table_; // the worker's
    Executor& worker_;
};

} // namespace tidewell
