#include "Core/Usage/CauseStore.h"

#include "Core/Usage/CauseLines.h"

#include <algorithm>
#include <cmath>

namespace pacelet {

namespace {

/// Bytes that a minute with one cause takes at least.
constexpr std::size_t usualCauseLine = 128;

bool isFinite(const CauseMinute& minute) {
    return std::ranges::all_of(minute.causes, [](const CauseNote& note) {
        return std::isfinite(note.seconds) && std::isfinite(note.mean) &&
               std::isfinite(note.highest);
    });
}

} // namespace

void CauseStore::append(const CauseMinute& minute) const {
    series().append(minute.t, isFinite(minute) ? CauseLines::encode(minute) : std::string{});
}

CauseJournal CauseStore::load(TimePoint since) const {
    CauseJournal journal;
    journal.reserve(series().size(since) / usualCauseLine);
    series().read(since, [&](std::string& text, std::int64_t firstMinute) {
        CauseLines::decode(text, firstMinute, journal);
    });
    journal.sort();
    return journal;
}

} // namespace pacelet
