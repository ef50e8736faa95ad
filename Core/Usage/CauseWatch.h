#pragma once

#include "Core/Usage/CauseJournal.h"
#include "Core/Usage/CauseMinute.h"

#include <optional>
#include <span>
#include <vector>

namespace pacelet {

/// One stretch of time in which a cause stood, with short breaks at most.
struct Spell {
    Cause cause;
    TimePoint end{};
    Seconds stood{};

    bool operator==(const Spell&) const = default;
};

/// Folds what the looks at the machine find into the causes of each clock minute, and remembers the
/// latest spell of each cause. The open minute is lost when the program ends.
class CauseWatch {
public:
    /// Looks further apart than this say nothing of the time between them: the machine slept, or
    /// nobody looked.
    static constexpr Seconds longestGap{90};

    /// For how long a spell is remembered after its end.
    static constexpr Seconds memory{3600};

    /// Takes in what a look at `at` found: it has stood since the look before, as figures of use
    /// are those of the time between two looks. Returns the minutes that are over by then and have
    /// a cause.
    std::vector<CauseMinute> add(std::span<const FoundCause> found, TimePoint at);

    /// Adds the spells of an earlier run.
    void remember(const CauseJournal& earlier);

    /// Forgets all spells.
    void forget() { spells_.clear(); }

    /// The spell of a minute or more that ended last, if that is not longer ago than the memory
    /// reaches.
    std::optional<Spell> latest(TimePoint now) const;

private:
    void turnTo(std::int64_t minute, std::vector<CauseMinute>& finished);
    void credit(const FoundCause& found, Seconds length);
    void extendSpell(const Cause& cause, Seconds length, TimePoint end);

    std::optional<TimePoint> lastLook_;
    CauseMinute open_; ///< in its notes, `mean` is still the figure times seconds
    std::vector<Spell> spells_;
};

} // namespace pacelet
