#pragma once

#include "Core/Usage/CauseJournal.h"
#include "Core/Usage/CauseMinute.h"
#include "Core/Usage/DaySeries.h"

#include <filesystem>

namespace pacelet {

/// What slowed the machine down, on disk: beside the files of the `UsageStore`, by the same rules,
/// one file a UTC day ("causes-2026-03-06.jsonl"), one line a minute that had a cause.
struct CauseStore {
    std::filesystem::path directory;

    /// As `UsageStore::append`.
    void append(const CauseMinute& minute) const;

    /// The notes from the minute of `since` on, in order of their minutes. What cannot be read is
    /// left out.
    CauseJournal load(TimePoint since) const;

    /// As those of `UsageStore`.
    void prune(std::int64_t olderThanDays, TimePoint now) const {
        series().prune(olderThanDays, now);
    }
    void clear() const { series().clear(); }

private:
    DaySeries series() const { return {directory, "causes-"}; }
};

} // namespace pacelet
