#include "Core/Usage/UsageStore.h"

#include "Core/Support/Checked.h"
#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Core/Usage/DayFile.h"
#include "Core/Usage/HistoryLines.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fmt/format.h>
#include <limits>

namespace pacelet {

namespace {

/// A day takes some 200 KB. A file that outgrew this is none of ours.
constexpr std::size_t largestFile = std::size_t{64} << 20;

/// What a line takes, about; little enough to be no waste when lines are longer.
constexpr std::size_t usualLine = 100;

constexpr double secondsPerDay = 86400;

bool isFinite(const MinuteRecord& record) {
    return std::isfinite(record.cpu) && std::isfinite(record.cpuMax);
}

/// Bytes of the files `names` in `directory` as far as they are worth reading.
std::size_t totalSize(const std::filesystem::path& directory,
                      const std::vector<std::string>& names) {
    std::size_t total = 0;
    for (const std::string& name : names) {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(directory / name, error);
        total += error || size > largestFile ? 0 : static_cast<std::size_t>(size);
    }
    return total;
}

bool earlierMinute(const MinuteRecord& left, const MinuteRecord& right) {
    return left.t < right.t;
}

} // namespace

UsageStoreError::UsageStoreError(std::filesystem::path path, std::error_code reason)
    : std::system_error{reason, path.string()}, path_{std::move(path)} {}

void UsageStore::append(const MinuteRecord& record) const {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        throw UsageStoreError{directory, error};
    }
    const std::int64_t seconds = checkedMultiply<std::int64_t>(record.t, 60);
    const auto path = directory / dayName(fromUnixTime(static_cast<double>(seconds)));
    if (!isFinite(record)) {
        // JSON has no word for it.
        throw UsageStoreError{path, std::make_error_code(std::errc::invalid_argument)};
    }
    if (const auto failure = DayFile::append(path.string(), HistoryLines::encode(record))) {
        throw UsageStoreError{path, failure};
    }
}

std::vector<MinuteRecord> UsageStore::load(TimePoint since) const {
    std::string firstFile;
    std::int64_t firstMinute = std::numeric_limits<std::int64_t>::min();
    if (since != distantPast) {
        firstFile = dayName(since);
        firstMinute = checkedTruncate(unixTime(since) / secondsPerMinute);
    }
    std::vector<std::string> names = files();
    names.erase(names.begin(), std::lower_bound(names.begin(), names.end(), firstFile));
    std::vector<MinuteRecord> records;
    records.reserve(totalSize(directory, names) / usualLine);
    std::string text;
    for (const std::string& name : names) {
        if (!readFile(directory / name, largestFile, text)) {
            HistoryLines::decode(text, firstMinute, records);
        }
    }
    // Files are in order but for a clock that was set back, and sorting takes memory.
    if (!std::is_sorted(records.begin(), records.end(), earlierMinute)) {
        std::stable_sort(records.begin(), records.end(), earlierMinute);
    }
    return records;
}

void UsageStore::prune(std::int64_t olderThanDays, TimePoint now) const {
    const std::string cutoff =
        dayName(now - Seconds{static_cast<double>(olderThanDays) * secondsPerDay});
    for (const std::string& name : files()) {
        if (name < cutoff) {
            remove(name);
        }
    }
}

void UsageStore::clear() const {
    for (const std::string& name : files()) {
        remove(name);
    }
}

std::vector<std::string> UsageStore::files() const {
    std::vector<std::string> names = sortedNames(directory.string());
    std::erase_if(names, [](const std::string& name) {
        return !name.starts_with("usage-") || pathExtension(name) != "jsonl";
    });
    return names;
}

std::string UsageStore::dayName(TimePoint date) {
    using namespace std::chrono;
    constexpr double outermostDay = 11'900'000;
    const double day = std::floor(unixTime(date) / secondsPerDay);
    precondition(std::abs(day) < outermostDay, "a date lies beyond the calendar");
    const year_month_day civil{sys_days{days{static_cast<std::int32_t>(day)}}};
    return fmt::format("usage-{:04}-{:02}-{:02}.jsonl", static_cast<int>(civil.year()),
                       static_cast<unsigned>(civil.month()), static_cast<unsigned>(civil.day()));
}

void UsageStore::remove(const std::string& name) const {
    const auto path = directory / name;
    std::error_code error;
    std::filesystem::remove(path, error);
    if (error) {
        throw UsageStoreError{path, error};
    }
}

} // namespace pacelet
