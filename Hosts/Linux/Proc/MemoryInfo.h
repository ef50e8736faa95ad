#pragma once

#include "Core/Platform/Kernel.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace pacelet::Linux {

/// What we take from `/proc/meminfo`, in bytes. A key that is missing or does not read is absent.
struct MemoryInfo {
    std::optional<std::int64_t> total;       ///< MemTotal
    std::optional<std::int64_t> free;        ///< MemFree
    std::optional<std::int64_t> available;   ///< MemAvailable: free, or given up when needed
    std::optional<std::int64_t> cached;      ///< Cached: pages of files, shared memory included
    std::optional<std::int64_t> anonymous;   ///< AnonPages
    std::optional<std::int64_t> buffers;     ///< Buffers
    std::optional<std::int64_t> shared;      ///< Shmem: shared memory and RAM disks
    std::optional<std::int64_t> reclaimable; ///< SReclaimable: caches of file names and the like
    std::optional<std::int64_t> zswap;       ///< Zswap: memory that compressed pages occupy
    std::optional<std::int64_t> swapTotal;   ///< SwapTotal
    std::optional<std::int64_t> swapFree;    ///< SwapFree

    bool operator==(const MemoryInfo&) const = default;
};

MemoryInfo parseMemoryInfo(std::string_view text);

/// The split of memory in the kernel statistics' terms, each byte counted once:
///  - free: MemFree;
///  - internal: AnonPages and Shmem, since shared memory can only be swapped, never dropped;
///  - external: Cached and Buffers without Shmem, and SReclaimable, which is dropped just as
///  easily;
///  - compressor: Zswap;
///  - wired: all the rest of what is installed. What is neither free nor any of the others is the
///    kernel's or the firmware's own and stays where it is: tables, stacks, drivers, huge pages,
///    compressed RAM disks.
///    (Unevictable is no part of it: locked pages are anonymous or a file's, and counted there.)
/// Nothing is purgeable. No split at all without MemTotal, MemFree, Cached and AnonPages.
std::optional<VMStatistics64> memoryStatistics(const MemoryInfo& info, std::int64_t pageSize,
                                               std::int64_t installed);

/// How much of the memory could still be handed out, from 0 to 1; nothing where the kernel does not
/// tell.
std::optional<double> availableShare(const MemoryInfo& info);

/// Swap space; nothing when the kernel does not tell it.
std::optional<SwapUsageRecord> swapUsage(const MemoryInfo& info, std::int64_t pageSize);

} // namespace pacelet::Linux
