#include "Core/Usage/CauseWatch.h"

#include "Core/Support/Checked.h"
#include "Core/Usage/MinuteRecord.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace pacelet {

namespace {

constexpr Seconds shortestSpell{60};

std::int64_t minuteOf(TimePoint time) {
    return checkedTruncate(unixTime(time) / secondsPerMinute,
                           "the time of a sample is out of range");
}

TimePoint startOf(std::int64_t minute) {
    return fromUnixTime(static_cast<double>(minute) * secondsPerMinute);
}

/// More digits would only make the files longer.
double hundredths(double value) {
    return std::round(value * 100) / 100;
}

CauseMinute closed(CauseMinute minute) {
    for (CauseNote& note : minute.causes) {
        note.mean = hundredths(note.mean / note.seconds);
        note.highest = hundredths(note.highest);
        note.seconds = std::clamp(hundredths(note.seconds), 0.01, secondsPerMinute);
    }
    return minute;
}

} // namespace

std::vector<CauseMinute> CauseWatch::add(std::span<const FoundCause> found, TimePoint at) {
    const Seconds gap = lastLook_ ? at - *lastLook_ : Seconds{0};
    lastLook_ = at;
    std::vector<CauseMinute> finished;
    const bool wasWatched = gap > Seconds{0} && gap <= longestGap;
    for (TimePoint from = wasWatched ? at - gap : at; from < at;) {
        const std::int64_t minute = minuteOf(from);
        const TimePoint end = std::min(at, startOf(minute + 1));
        turnTo(minute, finished);
        for (const FoundCause& each : found) {
            credit(each, end - from);
        }
        from = end;
    }
    turnTo(minuteOf(at), finished);
    std::erase_if(spells_, [&](const Spell& spell) { return at - spell.end > memory; });
    for (const FoundCause& each : found) {
        extendSpell(each.cause, wasWatched ? gap : Seconds{0}, at);
    }
    return finished;
}

void CauseWatch::turnTo(std::int64_t minute, std::vector<CauseMinute>& finished) {
    if (open_.t == minute) {
        return;
    }
    if (!open_.causes.empty()) {
        finished.push_back(closed(std::move(open_)));
    }
    open_ = {minute, {}};
}

void CauseWatch::credit(const FoundCause& found, Seconds length) {
    auto note = std::ranges::find(open_.causes, found.cause, &CauseNote::cause);
    if (note == open_.causes.end()) {
        note = open_.causes.insert(note, {found.cause, found.severity, 0, 0, found.figure});
    }
    note->severity = std::max(note->severity, found.severity);
    note->seconds += length.count();
    note->mean += found.figure * length.count();
    note->highest = std::max(note->highest, found.figure);
}

void CauseWatch::extendSpell(const Cause& cause, Seconds length, TimePoint end) {
    auto spell = std::ranges::find(spells_, cause, &Spell::cause);
    if (spell == spells_.end()) {
        spell = spells_.insert(spell, {cause, end, {}});
    }
    const bool isNew = end - length - spell->end > CauseJournal::longestBreak;
    spell->stood = (isNew ? Seconds{0} : spell->stood) + length;
    spell->end = end;
}

void CauseWatch::remember(const CauseJournal& earlier) {
    const std::vector<Spell> now = std::exchange(spells_, {});
    for (const CauseJournal::Entry& entry : earlier.entries()) {
        extendSpell(earlier.causes()[entry.cause], Seconds{entry.seconds}, startOf(entry.t + 1));
    }
    for (const Spell& each : now) {
        extendSpell(each.cause, each.stood, each.end);
    }
}

std::optional<Spell> CauseWatch::latest(TimePoint now) const {
    const Spell* latest = nullptr;
    for (const Spell& each : spells_) {
        // One that ended after now was noted by a clock that was wrong.
        const bool counts =
            each.stood >= shortestSpell && each.end <= now && now - each.end <= memory;
        if (counts && (latest == nullptr || each.end > latest->end)) {
            latest = &each;
        }
    }
    return latest != nullptr ? std::optional{*latest} : std::nullopt;
}

} // namespace pacelet
