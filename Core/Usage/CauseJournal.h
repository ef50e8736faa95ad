#pragma once

#include "Core/Usage/Cause.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pacelet {

/// What stood of one cause over a stretch of time.
struct CauseSummary {
    std::size_t cause = 0;       ///< its place among the journal's causes
    Severity severity{};         ///< the gravest
    Seconds stood{};             ///< all together
    std::int64_t spells = 0;     ///< how often it began
    std::int64_t lastMinute = 0; ///< the last one in which it stood, as in `MinuteRecord::t`
    double highest = 0;          ///< as in `CauseNote`

    bool operator==(const CauseSummary&) const = default;
};

/// The notes of many minutes. Each cause stands in it once.
class CauseJournal {
public:
    /// One note, as in `CauseNote`.
    struct Entry {
        std::int64_t t;
        std::uint32_t cause; ///< its place among `causes`
        Severity severity;
        float seconds;
        float mean;
        double highest;

        bool operator==(const Entry&) const = default;
    };

    /// A cause that was away for no longer than this did not end.
    static constexpr Seconds longestBreak{300};

    /// The place of the cause, which is added where it is new.
    std::uint32_t placeOf(FindingKind kind, std::string_view id, std::string_view name);

    /// Makes room for so many notes.
    void reserve(std::size_t notes) { entries_.reserve(notes); }

    void add(const Entry& entry) { entries_.push_back(entry); }

    /// Brings the entries into the order of their minutes; those of one minute stay as they are.
    void sort();

    const std::vector<Cause>& causes() const { return causes_; }
    const std::vector<Entry>& entries() const { return entries_; }
    /// The minutes from `first` up to, but without, `end`. In order of their minutes.
    std::span<const Entry> between(std::int64_t first, std::int64_t end) const;

    /// The causes of such a stretch, longest first.
    std::vector<CauseSummary> summary(std::int64_t first, std::int64_t end) const;

    /// For each cause how much of each part of the stretch it took, 0 to 1, when the stretch is cut
    /// into so many equal parts.
    std::vector<std::vector<float>> shares(std::int64_t first, std::int64_t end,
                                           std::size_t parts) const;

private:
    std::vector<Cause> causes_;
    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::uint32_t> places_; ///< by kind, id and name
    std::uint32_t lastPlace_ = 0;
};

} // namespace pacelet
