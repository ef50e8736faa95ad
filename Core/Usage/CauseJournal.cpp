#include "Core/Usage/CauseJournal.h"

#include "Core/Usage/MinuteRecord.h"

#include <algorithm>
#include <fmt/format.h>
#include <tuple>

namespace pacelet {

std::uint32_t CauseJournal::placeOf(FindingKind kind, std::string_view id, std::string_view name) {
    // Most minutes have the cause of the minute before.
    if (lastPlace_ < causes_.size()) {
        const Cause& last = causes_[lastPlace_];
        if (std::tie(last.kind, last.name, last.id) == std::tie(kind, name, id)) {
            return lastPlace_;
        }
    }
    const auto [found, isNew] =
        places_.try_emplace(fmt::format("{}\n{}\n{}", rawValue(kind), id, name),
                            static_cast<std::uint32_t>(causes_.size()));
    if (isNew) {
        causes_.push_back({kind, std::string{id}, std::string{name}});
    }
    return lastPlace_ = found->second;
}

void CauseJournal::sort() {
    if (!std::ranges::is_sorted(entries_, {}, &Entry::t)) {
        std::ranges::stable_sort(entries_, {}, &Entry::t);
    }
}

std::span<const CauseJournal::Entry> CauseJournal::between(std::int64_t first,
                                                           std::int64_t end) const {
    const auto from = std::ranges::lower_bound(entries_, first, {}, &Entry::t);
    return {from, std::ranges::lower_bound(from, entries_.end(), end, {}, &Entry::t)};
}

std::vector<CauseSummary> CauseJournal::summary(std::int64_t first, std::int64_t end) const {
    constexpr auto longestBreakMinutes =
        static_cast<std::int64_t>(longestBreak.count() / secondsPerMinute);
    std::vector<CauseSummary> all(causes_.size());
    for (const Entry& entry : between(first, end)) {
        CauseSummary& sum = all[entry.cause];
        sum.cause = entry.cause;
        sum.severity = std::max(sum.severity, entry.severity);
        sum.stood += Seconds{entry.seconds};
        sum.spells += sum.spells == 0 || entry.t - sum.lastMinute - 1 > longestBreakMinutes ? 1 : 0;
        sum.lastMinute = entry.t;
        sum.highest = std::max(sum.highest, entry.highest);
    }
    std::erase_if(all, [](const CauseSummary& sum) { return sum.spells == 0; });
    std::ranges::stable_sort(all, std::greater{}, &CauseSummary::stood);
    return all;
}

std::vector<std::vector<float>> CauseJournal::shares(std::int64_t first, std::int64_t end,
                                                     std::size_t parts) const {
    std::vector<std::vector<float>> shares(causes_.size(), std::vector<float>(parts));
    const auto partOf = [&](std::int64_t t) {
        return static_cast<std::size_t>(t - first) * parts / static_cast<std::size_t>(end - first);
    };
    // Of parts that are no whole minutes long, some have a minute more than others.
    std::vector<float> secondsOf(parts);
    for (std::int64_t t = first; t < end; ++t) {
        secondsOf.at(partOf(t)) += static_cast<float>(secondsPerMinute);
    }
    for (const Entry& entry : between(first, end)) {
        const std::size_t part = partOf(entry.t);
        float& share = shares[entry.cause][part];
        share = std::min(1.0F, share + entry.seconds / secondsOf[part]);
    }
    return shares;
}

} // namespace pacelet
