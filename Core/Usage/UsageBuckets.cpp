#include "Core/Usage/UsageBuckets.h"

#include "Core/Support/Checked.h"

#include <algorithm>
#include <unordered_map>

namespace pacelet::UsageBuckets {

namespace {

/// The records of one bucket, added up.
struct Tally {
    std::int64_t key;
    double cpuSum = 0;
    std::int64_t underPressure = 0;
    std::int64_t swap = std::numeric_limits<std::int64_t>::min();
    std::int64_t count = 0;

    void add(const MinuteRecord& record) {
        cpuSum += record.cpu;
        underPressure += record.pressure >= 1 ? 1 : 0;
        swap = std::max(swap, record.swap);
        ++count;
    }

    UsageBucket bucket(std::int64_t minutes) const {
        constexpr std::string_view what = "the time of a bucket exceeds 64 bits";
        const auto start =
            checkedMultiply<std::int64_t>(checkedMultiply(key, minutes, what), 60, what);
        const auto records = static_cast<double>(count);
        return {fromUnixTime(static_cast<double>(start)), cpuSum / records,
                static_cast<double>(underPressure) / records, swap, count};
    }
};

/// One tally a bucket, in the order in which they are first met.
std::vector<Tally> tally(const std::vector<MinuteRecord>& records, std::int64_t minutes) {
    std::vector<Tally> tallies;
    std::unordered_map<std::int64_t, std::size_t> places;
    std::size_t place = 0;
    for (const MinuteRecord& record : records) {
        const std::int64_t key = record.t / minutes;
        // Records come sorted as a rule, so that most belong where the last one went.
        if (tallies.empty() || tallies[place].key != key) {
            const auto [found, isNew] = places.try_emplace(key, tallies.size());
            place = found->second;
            if (isNew) {
                tallies.push_back({key});
            }
        }
        tallies[place].add(record);
    }
    return tallies;
}

} // namespace

std::vector<UsageBucket> bucket(const std::vector<MinuteRecord>& records, std::int64_t minutes) {
    precondition(minutes >= 1, "a bucket must hold a minute at least");
    std::vector<Tally> tallies = tally(records, minutes);
    std::ranges::sort(tallies, {}, &Tally::key);
    std::vector<UsageBucket> buckets;
    buckets.reserve(tallies.size());
    for (const Tally& each : tallies) {
        buckets.push_back(each.bucket(minutes));
    }
    return buckets;
}

} // namespace pacelet::UsageBuckets
