#include "model/memory/probes/darwin/MacDarwinHost.h"

#include <cerrno>
#include <cstddef>
#include <mach/mach.h>
#include <sys/sysctl.h>

namespace tidewell {

// The system's headers must agree with the decoders, which are tested where these headers are not.
static_assert(HOST_VM_INFO64 == 4);
static_assert(sizeof(VmStatistics) <= sizeof(vm_statistics64));
static_assert(offsetof(vm_statistics64, wire_count) == vm_statistics_offset::wireCount);
static_assert(offsetof(vm_statistics64, purgeable_count) == vm_statistics_offset::purgeableCount);
static_assert(offsetof(vm_statistics64, compressor_page_count) ==
              vm_statistics_offset::compressorPageCount);
static_assert(offsetof(vm_statistics64, external_page_count) ==
              vm_statistics_offset::externalPageCount);
static_assert(offsetof(vm_statistics64, internal_page_count) ==
              vm_statistics_offset::internalPageCount);
static_assert(offsetof(xsw_usage, xsu_total) == 0);
static_assert(offsetof(xsw_usage, xsu_avail) == 8);
static_assert(offsetof(xsw_usage, xsu_used) == 16);

MacDarwinHost::MacDarwinHost()
    : host_(mach_host_self()) {}

MacDarwinHost::~MacDarwinHost() {
    mach_port_deallocate(mach_task_self(), host_);
}

Result<ToolResult> MacDarwinHost::runMemoryPressure() {
    return memoryPressure_.run();
}

std::size_t MacDarwinHost::sizeOfVariable(const char* name) {
    std::size_t size = 0;
    sysctlbyname(name, nullptr, &size, nullptr, 0); // a failure leaves the 0
    return size;
}

DarwinHost::VariableRead MacDarwinHost::readVariable(const char* name,
                                                     std::span<std::byte> buffer) {
    std::size_t size = buffer.size();
    const int result = sysctlbyname(name, buffer.data(), &size, nullptr, 0);
    return {.error = result == 0 ? 0 : errno, .size = size};
}

std::optional<std::uint64_t> MacDarwinHost::pageSize() {
    vm_size_t size = 0;
    return host_page_size(host_, &size) == KERN_SUCCESS ? std::optional<std::uint64_t>(size)
                                                        : std::nullopt;
}

std::optional<VmStatistics> MacDarwinHost::vmStatistics() {
    VmStatistics statistics{};
    static_assert(sizeof(VmStatistics::value_type) == sizeof(integer_t));
    auto count = static_cast<mach_msg_type_number_t>(statistics.size());
    const auto result = host_statistics64(
        host_, HOST_VM_INFO64, reinterpret_cast<host_info64_t>(statistics.data()), &count);
    return result == KERN_SUCCESS ? std::optional(statistics) : std::nullopt;
}

} // namespace tidewell
