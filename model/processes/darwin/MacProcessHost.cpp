#include "model/processes/darwin/MacProcessHost.h"

#include <cstddef>
#include <libproc.h>
#include <type_traits>

namespace tidewell {

// The system's headers must agree with the reader, which is tested where these headers are not.
static_assert(PROC_PIDTASKINFO == 4);
static_assert(sizeof(proc_taskinfo) == sizeof(TaskInformation));
static_assert(offsetof(proc_taskinfo, pti_resident_size) == residentSizeOffset);
static_assert(std::is_same_v<decltype(proc_taskinfo::pti_resident_size), std::uint64_t>);
static_assert(std::is_same_v<pid_t, std::int32_t>);

int MacProcessHost::readTaskInformation(std::int32_t process, std::span<std::byte> record) {
    return proc_pidinfo(process, PROC_PIDTASKINFO, 0, record.data(),
                        static_cast<int>(record.size()));
}

} // namespace tidewell
