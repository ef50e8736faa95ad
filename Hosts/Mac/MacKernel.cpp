#include "Hosts/Mac/MacKernel.h"

#include "Hosts/Mac/ProcessInfo.h"
#include "Hosts/Mac/Records/Records.h"

#include <libproc.h>
#include <mach/mach.h>
#include <sys/resource.h>
#include <sys/sysctl.h>
#include <unistd.h>

namespace pacelet::Mac {

std::optional<std::size_t> MacKernel::sysctlbyname(std::string_view name,
                                                   std::span<std::byte> record) {
    std::size_t size = record.size();
    const int status = ::sysctlbyname(std::string{name}.c_str(), record.data(), &size, nullptr, 0);
    return filledBytes(status, size, record.size());
}

std::optional<VMStatistics64> MacKernel::hostStatistics64() {
    vm_statistics64_data_t record{};
    mach_msg_type_number_t count = HOST_VM_INFO64_COUNT;
    // Each call makes one more reference to the port, which is to be given back.
    const mach_port_t host = ::mach_host_self();
    const kern_return_t status =
        ::host_statistics64(host, HOST_VM_INFO64, reinterpret_cast<host_info64_t>(&record), &count);
    ::mach_port_deallocate(mach_task_self(), host);
    return status == KERN_SUCCESS ? std::optional{vmStatisticsOf(record)} : std::nullopt;
}

std::int64_t MacKernel::pageSize() {
    return ::sysconf(_SC_PAGESIZE);
}

std::optional<std::int64_t> MacKernel::physFootprint(std::int32_t pid) {
    rusage_info_v6 record{};
    const int status =
        ::proc_pid_rusage(pid, RUSAGE_INFO_V6, reinterpret_cast<rusage_info_t*>(&record));
    return status == 0 ? std::optional{static_cast<std::int64_t>(record.ri_phys_footprint)}
                       : std::nullopt;
}

std::int64_t MacKernel::activeProcessorCount() {
    return ProcessInfo::activeProcessorCount();
}

std::int64_t MacKernel::physicalMemory() {
    return ProcessInfo::physicalMemory();
}

int MacKernel::thermalState() {
    return thermalStateOf(ProcessInfo::thermalState());
}

Seconds MacKernel::systemUptime() {
    return Seconds{ProcessInfo::systemUptime()};
}

bool MacKernel::isLowPowerModeEnabled() {
    return ProcessInfo::isLowPowerModeEnabled();
}

std::optional<VolumeCapacities> MacKernel::volumeCapacities(const std::string& path) {
    return ProcessInfo::volumeCapacities(path);
}

std::uint32_t MacKernel::getuid() {
    return ::getuid();
}

} // namespace pacelet::Mac
