#pragma once

#include "base/ports/Log.h"
#include "base/runtime/Executor.h"
#include "model/processes/ApplicationSource.h"

#include <string>
#include <vector>

namespace tidewell {

class ProcessTable;

/// The processes of one user of a Linux machine, in the order of their numbers: every one that
/// runs an executable, so neither threads of the kernel nor processes that have ended.
///
/// The one that leads its application has the name of the application's desktop entry, a helper
/// of it has its own command name and the application's icon. What belongs to no entry has its
/// command name and the icon for executables.
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
    /// As of the last list, when it was read.
    std::optional<std::uint64_t> residentMemory(ProcessIdentifier process) override;

private:
    struct Knowledge;
    static Task<ApplicationList> look(std::shared_ptr<Knowledge> knowledge, Executor* worker);

    std::shared_ptr<Knowledge> knowledge_;
    Executor& worker_;
};

} // namespace tidewell
