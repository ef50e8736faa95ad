#include "Core/Usage/UsageStore.h"

#include "Core/Usage/HistoryLines.h"

#include <algorithm>
#include <cmath>

namespace pacelet {

namespace {

/// What a line takes, about; little enough to be no waste when lines are longer.
constexpr std::size_t usualLine = 100;

bool isFinite(const MinuteRecord& record) {
    return std::isfinite(record.cpu) && std::isfinite(record.cpuMax);
}

bool earlierMinute(const MinuteRecord& left, const MinuteRecord& right) {
    return left.t < right.t;
}

} // namespace

void UsageStore::append(const MinuteRecord& record) const {
    // JSON has no word for what is not finite.
    series().append(record.t, isFinite(record) ? HistoryLines::encode(record) : std::string{});
}

std::vector<MinuteRecord> UsageStore::load(TimePoint since) const {
    std::vector<MinuteRecord> records;
    records.reserve(series().size(since) / usualLine);
    series().read(since, [&](std::string& text, std::int64_t firstMinute) {
        HistoryLines::decode(text, firstMinute, records);
    });
    // Files are in order but for a clock that was set back, and sorting takes memory.
    if (!std::is_sorted(records.begin(), records.end(), earlierMinute)) {
        std::stable_sort(records.begin(), records.end(), earlierMinute);
    }
    return records;
}

void UsageStore::prune(std::int64_t olderThanDays, TimePoint now) const {
    series().prune(olderThanDays, now);
}

void UsageStore::clear() const {
    series().clear();
}

} // namespace pacelet
