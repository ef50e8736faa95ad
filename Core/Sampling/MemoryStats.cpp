#include "Core/Sampling/MemoryStats.h"

#include <algorithm>

namespace pacelet {

std::int64_t MemoryBreakdown::used() const {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(app, wired, &sum) || __builtin_add_overflow(sum, compressed, &sum)) {
        return total;
    }
    return std::min(sum, total);
}

MemoryBreakdown MemoryStats::read(Kernel& kernel) {
    MemoryBreakdown split;
    split.total = kernel.physicalMemory();
    const auto pages = kernel.hostStatistics64();
    if (!pages) {
        split.free = split.total;
        return split;
    }
    const std::int64_t pageSize = kernel.pageSize();
    const std::int64_t purgeable = pages->purgeable_count;
    split.app = std::max<std::int64_t>(pages->internal_page_count - purgeable, 0) * pageSize;
    split.wired = pages->wire_count * pageSize;
    split.compressed = pages->compressor_page_count * pageSize;
    split.cached = (pages->external_page_count + purgeable) * pageSize;
    split.free = pages->free_count * pageSize;
    return split;
}

} // namespace pacelet
