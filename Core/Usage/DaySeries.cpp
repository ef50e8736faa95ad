#include "Core/Usage/DaySeries.h"

#include "Core/Support/Checked.h"
#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Core/Usage/DayFile.h"
#include "Core/Usage/MinuteRecord.h"
#include "Core/Usage/OwnersOnly.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fmt/format.h>
#include <limits>

namespace pacelet {

namespace {

/// A day takes some 200 KB. A file that outgrew this is none of ours.
constexpr std::size_t largestFile = std::size_t{64} << 20;

constexpr double secondsPerDay = 86400;

} // namespace

UsageStoreError::UsageStoreError(std::filesystem::path path, std::error_code reason)
    : std::system_error{reason, path.string()},
      path_{std::move(path)} {}

void DaySeries::append(std::int64_t minute, std::string_view line) const {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        throw UsageStoreError{directory, error};
    }
    OwnersOnly::keep(directory);
    const auto seconds =
        checkedMultiply<std::int64_t>(minute, 60, "the time of a record exceeds 64 bits");
    const auto path = directory / dayName(fromUnixTime(static_cast<double>(seconds)));
    const auto failure = line.empty() ? std::make_error_code(std::errc::invalid_argument)
                                      : DayFile::append(path.string(), line);
    if (failure) {
        throw UsageStoreError{path, failure};
    }
}

void DaySeries::read(TimePoint since, const Reader& reader) const {
    const std::int64_t firstMinute =
        since == distantPast
            ? std::numeric_limits<std::int64_t>::min()
            : checkedTruncate(unixTime(since) / secondsPerMinute, "a date is out of range");
    std::string text;
    for (const std::string& name : filesSince(since)) {
        if (!readFile(directory / name, largestFile, text)) {
            reader(text, firstMinute);
        }
    }
}

std::size_t DaySeries::size(TimePoint since) const {
    std::size_t total = 0;
    for (const std::string& name : filesSince(since)) {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(directory / name, error);
        total += error || size > largestFile ? 0 : static_cast<std::size_t>(size);
    }
    return total;
}

void DaySeries::prune(std::int64_t olderThanDays, TimePoint now) const {
    const std::string cutoff =
        dayName(now - Seconds{static_cast<double>(olderThanDays) * secondsPerDay});
    for (const std::string& name : files()) {
        if (name < cutoff) {
            remove(name);
        } else {
            OwnersOnly::keep(directory / name);
        }
    }
}

void DaySeries::clear() const {
    for (const std::string& name : files()) {
        remove(name);
    }
}

std::vector<std::string> DaySeries::files() const {
    std::vector<std::string> names = sortedNames(directory.string());
    std::erase_if(names, [this](const std::string& name) {
        return !name.starts_with(prefix) || pathExtension(name) != "jsonl";
    });
    return names;
}

std::vector<std::string> DaySeries::filesSince(TimePoint since) const {
    const std::string first = since == distantPast ? std::string{} : dayName(since);
    std::vector<std::string> names = files();
    names.erase(names.begin(), std::lower_bound(names.begin(), names.end(), first));
    return names;
}

std::string DaySeries::dayName(TimePoint date) const {
    using namespace std::chrono;
    constexpr double outermostDay = 11'900'000;
    const double day = std::floor(unixTime(date) / secondsPerDay);
    precondition(std::abs(day) < outermostDay, "a date lies beyond the calendar");
    const year_month_day civil{sys_days{days{static_cast<std::int32_t>(day)}}};
    return fmt::format("{}{:04}-{:02}-{:02}.jsonl", prefix, static_cast<int>(civil.year()),
                       static_cast<unsigned>(civil.month()), static_cast<unsigned>(civil.day()));
}

void DaySeries::remove(const std::string& name) const {
    const auto path = directory / name;
    std::error_code error;
    std::filesystem::remove(path, error);
    if (error) {
        throw UsageStoreError{path, error};
    }
}

} // namespace pacelet
