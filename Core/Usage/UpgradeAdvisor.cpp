#include "Core/Usage/UpgradeAdvisor.h"

#include "Core/Support/Checked.h"

#include <algorithm>

namespace pacelet {

namespace UpgradeAdvisor {

namespace {

/// A day's worth of minutes, on two days at least: less says nothing about how the machine is used.
constexpr std::size_t fewestRecords = minutesPerDay;

constexpr double pressureShareLimit = 0.15;
constexpr double swapShareLimit = 0.25; ///< of installed memory, for the median swap
constexpr double busyLoad = 80.0;       ///< percent of the machine, mean of a minute
constexpr double busyShareLimit = 0.2;
constexpr double freeShareLimit = 0.15;

bool coversTwoDays(const std::vector<MinuteRecord>& records) {
    return std::any_of(records.begin(), records.end(), [&](const MinuteRecord& record) {
        return record.t / minutesPerDay != records.front().t / minutesPerDay;
    });
}

template<typename Condition>
double shareOf(const std::vector<MinuteRecord>& records, Condition&& condition) {
    const auto count = std::count_if(records.begin(), records.end(), condition);
    return static_cast<double>(count) / static_cast<double>(records.size());
}

/// The upper middle for an even number of records.
std::int64_t medianSwap(const std::vector<MinuteRecord>& records) {
    std::vector<std::int64_t> swaps(records.size());
    std::transform(records.begin(), records.end(), swaps.begin(),
                   [](const MinuteRecord& record) { return record.swap; });
    const auto middle = swaps.begin() + static_cast<std::ptrdiff_t>(swaps.size() / 2);
    std::nth_element(swaps.begin(), middle, swaps.end());
    return *middle;
}

bool isShortOfMemory(double pressureShare, const std::vector<MinuteRecord>& records,
                     std::int64_t memoryBytes) {
    return pressureShare >= pressureShareLimit ||
           static_cast<double>(medianSwap(records)) >=
               static_cast<double>(memoryBytes) * swapShareLimit;
}

} // namespace

std::int64_t recommendedMemoryGB(std::int64_t current) {
    const auto step = std::lower_bound(
        memorySteps.begin(), memorySteps.end(),
        checkedMultiply<std::int64_t>(current, 2, "twice the memory exceeds 64 bits"));
    return step == memorySteps.end() ? memorySteps.back() : *step;
}

UpgradeVerdict evaluate(const std::vector<MinuteRecord>& records, std::int64_t memoryBytes,
                        double diskFreeShare) {
    const std::int64_t hours = static_cast<std::int64_t>(records.size()) / minutesPerHour;
    if (records.size() < fewestRecords || !coversTwoDays(records)) {
        return NotEnoughData{hours};
    }
    const double pressureShare =
        shareOf(records, [](const MinuteRecord& record) { return record.pressure >= 1; });
    const double busyShare =
        shareOf(records, [](const MinuteRecord& record) { return record.cpu >= busyLoad; });
    std::vector<Bottleneck> list;
    if (isShortOfMemory(pressureShare, records, memoryBytes)) {
        list.emplace_back(MemoryBottleneck{recommendedMemoryGB(memoryBytes >> 30), pressureShare});
    }
    if (busyShare >= busyShareLimit) {
        list.emplace_back(CPUBottleneck{busyShare});
    }
    if (diskFreeShare < freeShareLimit) {
        list.emplace_back(StorageBottleneck{diskFreeShare});
    }
    if (list.empty()) {
        return Healthy{hours};
    }
    return Bottlenecks{std::move(list), hours};
}

} // namespace UpgradeAdvisor

std::int64_t hoursMeasured(const UpgradeVerdict& verdict) {
    return std::visit([](const auto& each) { return each.hoursMeasured; }, verdict);
}

} // namespace pacelet
