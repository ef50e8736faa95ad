#pragma once

#include "Core/Support/Time.h"
#include "Core/Usage/DaySeries.h"
#include "Core/Usage/MinuteRecord.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace pacelet {

/// The history on disk: one file a UTC day ("usage-2026-03-06.jsonl"), one line a record, in the
/// order in which the minutes closed. There is no cache, no lock and no other state, so copies of
/// the store may work side by side: a load that meets a line half written leaves it out.
struct UsageStore {
    std::filesystem::path directory;

    /// Adds a line to the file of the record's own day, and makes folder and file where they are
    /// missing. A file that cannot be opened for writing is written anew. A line that could not be
    /// written whole is taken back, so that it does not spoil the next one. Throws
    /// `UsageStoreError`.
    void append(const MinuteRecord& record) const;

    /// All records from the minute of `since` on (every record there is for `distantPast`), sorted
    /// by `t`; those of one minute keep the order in which they were read. Only the files of the
    /// days in question are opened. What cannot be read is left out.
    std::vector<MinuteRecord> load(TimePoint since) const;

    /// Removes the files of the days before the one that lies `olderThanDays` before `now`. Throws
    /// `UsageStoreError` at the first that cannot be removed, and the later ones stay.
    void prune(std::int64_t olderThanDays, TimePoint now) const;

    /// Removes every day file, and nothing else in the folder. Throws as `prune` does.
    void clear() const;

    bool operator==(const UsageStore&) const = default;

private:
    DaySeries series() const { return {directory, "usage-"}; }
};

} // namespace pacelet
