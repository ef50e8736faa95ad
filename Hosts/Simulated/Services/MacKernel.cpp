#include "Hosts/Simulated/Services/MacKernel.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace pacelet::Simulated {

namespace {

std::optional<std::size_t> copyBytes(const void* bytes, std::size_t size,
                                     std::span<std::byte> record) {
    if (size > record.size()) {
        return std::nullopt;
    }
    std::memcpy(record.data(), bytes, size);
    return size;
}

template<typename Value>
std::optional<std::size_t> copyValue(const Value& value, std::span<std::byte> record) {
    static_assert(std::is_trivially_copyable_v<Value>);
    return copyBytes(&value, sizeof value, record);
}

SwapUsageRecord swapUsage(const World& world) {
    // Swap files come in whole gibibytes, one of them spare.
    const std::int64_t files = (world.vitals.swapUsed + gibibyte - 1) / gibibyte + 1;
    SwapUsageRecord swap;
    swap.xsu_total = static_cast<std::uint64_t>(files * gibibyte);
    swap.xsu_used = static_cast<std::uint64_t>(world.vitals.swapUsed);
    swap.xsu_avail = swap.xsu_total - swap.xsu_used;
    swap.xsu_pagesize = static_cast<std::uint32_t>(world.hardware.pageSize);
    swap.xsu_encrypted = 1;
    return swap;
}

BootTimeRecord bootTime(const World& world) {
    return {static_cast<std::int64_t>(unixTime(world.vitals.bootTime)), 0};
}

/// A split of memory that fits what the processes hold: what exceeds the room for anonymous pages
/// is compressed, three to one, or stands in the swap.
VMStatistics64 split(const World& world) {
    std::int64_t demand = 0;
    for (const Process& process : world.processes.all()) {
        demand += process.footprint;
    }
    const auto memory = static_cast<double>(world.hardware.memoryBytes);
    const auto wanted = static_cast<double>(demand);
    const double freeShare = world.vitals.pressureLevel == 1 ? 0.04 : 0.008;
    const double wired = 0.13 * memory;
    const double anonymous = std::min(wanted, 0.58 * memory);
    const double squeezed =
        std::max(wanted - anonymous - static_cast<double>(world.vitals.swapUsed), 0.0);
    const double compressed = std::min(squeezed / 3, 0.22 * memory);
    const double purgeable = std::min(0.015 * memory, anonymous);
    const double free = freeShare * memory;
    const double fileBacked = std::max(memory - wired - anonymous - compressed - free, 0.0);

    const auto pages = [&](double bytes) {
        return static_cast<std::uint32_t>(bytes / static_cast<double>(world.hardware.pageSize));
    };
    VMStatistics64 statistics;
    statistics.free_count = pages(free);
    statistics.wire_count = pages(wired);
    statistics.purgeable_count = pages(purgeable);
    statistics.compressor_page_count = pages(compressed);
    statistics.external_page_count = pages(fileBacked);
    statistics.internal_page_count = pages(anonymous);
    return statistics;
}

} // namespace

std::optional<std::size_t> MacKernel::sysctlbyname(std::string_view name,
                                                   std::span<std::byte> record) {
    const auto world = machine_.lock();
    if (world->failures.find<SysctlFails>([name](const SysctlFails& failure) {
            return failure.name.empty() || failure.name == name;
        }) != nullptr) {
        return std::nullopt;
    }
    if (name == "kern.memorystatus_vm_pressure_level") {
        return copyValue(world->vitals.pressureLevel, record);
    }
    if (name == "vm.swapusage") {
        return copyValue(swapUsage(*world), record);
    }
    if (name == "kern.boottime") {
        return copyValue(bootTime(*world), record);
    }
    // An Intel Mac does not know this name at all.
    if (name == "hw.optional.arm64" && world->hardware.appleSilicon) {
        return copyValue(std::int32_t{1}, record);
    }
    if (name == "hw.model") {
        const std::string model{world->hardware.model};
        return copyBytes(model.c_str(), model.size() + 1, record);
    }
    return std::nullopt;
}

std::optional<VMStatistics64> MacKernel::hostStatistics64() {
    const auto world = machine_.lock();
    if (world->failures.has<StatisticsFail>()) {
        return std::nullopt;
    }
    return split(*world);
}

std::int64_t MacKernel::pageSize() {
    return machine_.lock()->hardware.pageSize;
}

std::optional<std::int64_t> MacKernel::physFootprint(std::int32_t pid) {
    const auto world = machine_.lock();
    const Process* const process = world->processes.find(pid);
    if (process == nullptr || process->user.uid != ann.uid ||
        world->failures.has<FootprintFails>()) {
        return std::nullopt;
    }
    return process->footprint;
}

std::int64_t MacKernel::activeProcessorCount() {
    return machine_.lock()->hardware.cores;
}

std::int64_t MacKernel::physicalMemory() {
    return machine_.lock()->hardware.memoryBytes;
}

int MacKernel::thermalState() {
    return machine_.lock()->vitals.thermalState;
}

Seconds MacKernel::systemUptime() {
    return machine_.lock()->uptime();
}

bool MacKernel::isLowPowerModeEnabled() {
    return machine_.lock()->vitals.lowPower;
}

std::optional<VolumeCapacities> MacKernel::volumeCapacities(const std::string& path) {
    const auto world = machine_.lock();
    if (path.empty() || path.front() != '/' || world->failures.has<VolumeUnreadable>()) {
        return std::nullopt;
    }
    return VolumeCapacities{world->vitals.diskFree, world->hardware.diskBytes};
}

} // namespace pacelet::Simulated
