#pragma once

#include "Core/Support/Time.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace pacelet {

/// The counts of the kernel's memory statistics, in pages of `Kernel::pageSize`.
struct VMStatistics64 {
    std::uint32_t free_count = 0;
    std::uint32_t wire_count = 0;
    std::uint32_t purgeable_count = 0;
    std::uint32_t compressor_page_count = 0;
    std::uint32_t external_page_count = 0; ///< file-backed pages
    std::uint32_t internal_page_count = 0; ///< anonymous pages
};

/// The record of "vm.swapusage": 32 bytes.
struct SwapUsageRecord {
    std::uint64_t xsu_total = 0;
    std::uint64_t xsu_avail = 0;
    std::uint64_t xsu_used = 0; ///< bytes of swap in use
    std::uint32_t xsu_pagesize = 0;
    std::uint32_t xsu_encrypted = 0;
};
static_assert(sizeof(SwapUsageRecord) == 32);

/// The record of "kern.boottime": 16 bytes.
struct BootTimeRecord {
    std::int64_t tv_sec = 0; ///< whole seconds since 1970-01-01 00:00 UTC
    std::int64_t tv_usec = 0;
};
static_assert(sizeof(BootTimeRecord) == 16);

/// Space of a volume, in bytes; each figure is absent when the system does not tell it.
struct VolumeCapacities {
    std::optional<std::int64_t> availableForImportantUsage;
    std::optional<std::int64_t> total;
};

/// The system calls that the readers need, in raw form: their meaning is read out by Core. None of
/// them throws, and all are safe from any thread.
class Kernel {
public:
    virtual ~Kernel() = default;

    /// Fills `record` with the value under `name` and answers how many bytes that took, or nothing
    /// when there is no such value or it does not fit. Names in use, with their records:
    /// "kern.memorystatus_vm_pressure_level" (int32: 1 normal, 2 warn, 4 critical), "vm.swapusage"
    /// (`SwapUsageRecord`), "kern.boottime" (`BootTimeRecord`), "hw.optional.arm64" (int32),
    /// "hw.model" and "kern.ostype" (texts with a NUL at their ends).
    virtual std::optional<std::size_t> sysctlbyname(std::string_view name,
                                                    std::span<std::byte> record) = 0;

    /// The kernel's memory statistics, or nothing when the call fails.
    virtual std::optional<VMStatistics64> hostStatistics64() = 0;

    /// Bytes of one page.
    virtual std::int64_t pageSize() = 0;

    /// Physical footprint of a process in bytes; nothing when it has gone or may not be asked.
    virtual std::optional<std::int64_t> physFootprint(std::int32_t pid) = 0;

    virtual std::int64_t activeProcessorCount() = 0;

    /// Bytes of installed memory.
    virtual std::int64_t physicalMemory() = 0;

    /// Bytes of memory that could be handed out without swapping; nothing where the system keeps no
    /// such count, as on a Mac.
    virtual std::optional<std::int64_t> availableMemory() = 0;

    /// 0 nominal, 1 fair, 2 serious, 3 critical.
    virtual int thermalState() = 0;

    /// Time since boot, the machine's sleep not necessarily included.
    virtual Seconds systemUptime() = 0;

    virtual bool isLowPowerModeEnabled() = 0;

    /// Capacities of the volume that holds `path`; nothing when it cannot be read.
    virtual std::optional<VolumeCapacities> volumeCapacities(const std::string& path) = 0;

    /// The user that the program runs as.
    virtual std::uint32_t getuid() = 0;
};

/// The value under `name` when the kernel has it in just this size.
template<typename Record>
std::optional<Record> readSysctl(Kernel& kernel, std::string_view name) {
    static_assert(std::is_trivially_copyable_v<Record>);
    Record record{};
    const auto size =
        kernel.sysctlbyname(name, std::as_writable_bytes(std::span{&record, std::size_t{1}}));
    if (size != sizeof(Record)) {
        return std::nullopt;
    }
    return record;
}

} // namespace pacelet
