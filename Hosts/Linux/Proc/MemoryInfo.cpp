#include "Hosts/Linux/Proc/MemoryInfo.h"

#include "Hosts/Linux/Proc/KeyedFigures.h"

#include <algorithm>
#include <array>
#include <limits>

namespace pacelet::Linux {

namespace {

struct Key {
    std::string_view name;
    std::optional<std::int64_t> MemoryInfo::*field;
};

constexpr std::array keys{
    Key{"MemTotal", &MemoryInfo::total},
    Key{"MemFree", &MemoryInfo::free},
    Key{"MemAvailable", &MemoryInfo::available},
    Key{"Cached", &MemoryInfo::cached},
    Key{"AnonPages", &MemoryInfo::anonymous},
    Key{"Buffers", &MemoryInfo::buffers},
    Key{"Shmem", &MemoryInfo::shared},
    Key{"SReclaimable", &MemoryInfo::reclaimable},
    Key{"Zswap", &MemoryInfo::zswap},
    Key{"SwapTotal", &MemoryInfo::swapTotal},
    Key{"SwapFree", &MemoryInfo::swapFree},
};

std::uint32_t pages(std::int64_t bytes, std::int64_t pageSize) {
    const std::int64_t count = std::max<std::int64_t>(bytes, 0) / pageSize;
    return static_cast<std::uint32_t>(
        std::min<std::int64_t>(count, std::numeric_limits<std::uint32_t>::max()));
}

/// Takes up to `bytes` from what is left of the memory, so that counters that do not belong
/// together never add up to more than there is.
std::int64_t take(std::int64_t& left, std::int64_t bytes) {
    const std::int64_t taken = std::clamp<std::int64_t>(bytes, 0, left);
    left -= taken;
    return taken;
}

} // namespace

MemoryInfo parseMemoryInfo(std::string_view text) {
    MemoryInfo info;
    forEachFigure(text, [&](std::string_view name, std::string_view value) {
        const auto key = std::find_if(keys.begin(), keys.end(),
                                      [&](const Key& candidate) { return candidate.name == name; });
        if (key != keys.end()) {
            info.*key->field = parseKilobytes(value);
        }
    });
    return info;
}

std::optional<VMStatistics64> memoryStatistics(const MemoryInfo& info, std::int64_t pageSize,
                                               std::int64_t installed) {
    if (!info.total || !info.free || !info.cached || !info.anonymous || pageSize <= 0) {
        return std::nullopt;
    }
    const std::int64_t shared = info.shared.value_or(0);
    std::int64_t left = std::max(*info.total, installed);
    VMStatistics64 statistics;
    statistics.free_count = pages(take(left, *info.free), pageSize);
    const std::int64_t anonymous = take(left, *info.anonymous);
    const std::int64_t internal = anonymous + take(left, shared);
    statistics.internal_page_count = pages(internal, pageSize);
    const std::int64_t files = take(left, *info.cached - shared);
    const std::int64_t buffers = take(left, info.buffers.value_or(0));
    const std::int64_t external = files + buffers + take(left, info.reclaimable.value_or(0));
    statistics.external_page_count = pages(external, pageSize);
    statistics.compressor_page_count = pages(take(left, info.zswap.value_or(0)), pageSize);
    statistics.wire_count = pages(left, pageSize);
    return statistics;
}

std::optional<double> availableShare(const MemoryInfo& info) {
    if (!info.available || info.total.value_or(0) <= 0) {
        return std::nullopt;
    }
    return std::clamp(static_cast<double>(*info.available) / static_cast<double>(*info.total), 0.0,
                      1.0);
}

std::optional<SwapUsageRecord> swapUsage(const MemoryInfo& info, std::int64_t pageSize) {
    if (!info.swapTotal || !info.swapFree) {
        return std::nullopt;
    }
    const std::int64_t available = std::min(*info.swapFree, *info.swapTotal);
    SwapUsageRecord record;
    record.xsu_total = static_cast<std::uint64_t>(*info.swapTotal);
    record.xsu_avail = static_cast<std::uint64_t>(available);
    record.xsu_used = static_cast<std::uint64_t>(*info.swapTotal - available);
    record.xsu_pagesize = static_cast<std::uint32_t>(pageSize);
    return record;
}

} // namespace pacelet::Linux
