#pragma once

#include "Core/Support/Time.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace pacelet {

/// A history file could not be written or removed. `code()` tells why, `what()` names the file too.
class UsageStoreError : public std::system_error {
public:
    UsageStoreError(std::filesystem::path path, std::error_code reason);

    /// The file or folder that was worked on.
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// Files of one kind in a folder, one a UTC day, named by it: "usage-2026-03-06.jsonl". There is no
/// cache, no lock and no other state.
struct DaySeries {
    std::filesystem::path directory;
    std::string_view prefix; ///< what names begin with: "usage-"

    /// Adds `line`, which ends in a line feed, to the file of the day in which the minute `minute`
    /// lies, and makes folder and file where they are missing, for their owner alone. An empty line
    /// stands for what cannot be written. Throws `UsageStoreError`.
    void append(std::int64_t minute, std::string_view line) const;

    /// Hands over the text of each file that may hold something since then, in order of the days,
    /// and the first minute that counts. A file that cannot be read is left out.
    using Reader = std::function<void(std::string& text, std::int64_t firstMinute)>;
    void read(TimePoint since, const Reader& reader) const;

    /// Bytes of the files that `read` would read.
    std::size_t size(TimePoint since) const;

    /// Removes the files of the days before the one that lies `olderThanDays` before `now`. Throws
    /// `UsageStoreError` at the first that cannot be removed, and the later ones stay. What is kept
    /// is kept from other users.
    void prune(std::int64_t olderThanDays, TimePoint now) const;

    /// Removes every file of the series. Throws as `prune` does.
    void clear() const;

private:
    /// The names of the files, sorted, which is in order of their days. A missing or unreadable
    /// folder has none.
    std::vector<std::string> files() const;

    /// Those of the day of `since` and later ones.
    std::vector<std::string> filesSince(TimePoint since) const;

    /// The name of the file of the UTC day of `date`; a date beyond the calendar (years -32767 to
    /// 32767) stops the program.
    std::string dayName(TimePoint date) const;

    void remove(const std::string& name) const;
};

} // namespace pacelet
