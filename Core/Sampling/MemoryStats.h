#pragma once

#include "Core/Platform/Kernel.h"

#include <cstdint>

namespace pacelet {

/// How physical memory is split, in bytes.
struct MemoryBreakdown {
    std::int64_t total = 0;
    std::int64_t app = 0;        ///< held by applications
    std::int64_t wired = 0;      ///< cannot be paged out
    std::int64_t compressed = 0; ///< occupied by the compressor
    std::int64_t cached = 0;     ///< file-backed and purgeable: given up when needed
    std::int64_t free = 0;

    /// How full memory is: what applications, the system and the compressor hold, at most `total`.
    std::int64_t used() const;

    bool operator==(const MemoryBreakdown&) const = default;
};

namespace MemoryStats {

/// Reads the split; without statistics all memory counts as free.
MemoryBreakdown read(Kernel& kernel);

} // namespace MemoryStats

} // namespace pacelet
