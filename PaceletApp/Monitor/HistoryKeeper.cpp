#include "PaceletApp/Monitor/HistoryKeeper.h"

#include "PaceletApp/Monitor/MonitorLog.h"
#include "PaceletApp/Scheduler/Detach.h"

#include <fmt/format.h>

#include <utility>
#include <vector>

namespace pacelet {

namespace {

constexpr std::int64_t daysOfHistory = 30;

/// A spell that began longer ago than this is told from here on, when the program starts.
constexpr Seconds longestSpell{86400};

void pruneIgnoringFailure(const auto& store, TimePoint now) {
    try {
        store.prune(daysOfHistory, now);
    } catch (const UsageStoreError&) {
        // What could not be removed now is tried again at the next start.
        return;
    }
}

void appendOrLog(const auto& store, const auto& record, Log& log) {
    try {
        store.append(record);
    } catch (const UsageStoreError& failure) {
        log.write(LogLevel::error, logSubsystem, monitorLogCategory,
                  fmt::format("history write failed: {}", failure.what()));
    }
}

} // namespace

HistoryKeeper::HistoryKeeper(const std::filesystem::path& directory, Scheduler& scheduler, Log& log)
    : scheduler_{scheduler},
      log_{log},
      usage_{.directory = directory},
      causes_{.directory = directory} {}

BackgroundTask<CauseJournal> HistoryKeeper::tidy(TimePoint now) const {
    return scheduler_.runInBackground([usage = usage_, causes = causes_, now] {
        pruneIgnoringFailure(usage, now);
        pruneIgnoringFailure(causes, now);
        return causes.load(now - longestSpell);
    });
}

void HistoryKeeper::addLook(const MachineReading& reading, TimePoint now) {
    const std::optional<MinuteRecord> record =
        aggregator_.add(reading.signals.cpuLoadPercent, reading.signals.pressure,
                        reading.signals.swapUsedBytes, reading.memory.used(), now);
    if (record) {
        detach(scheduler_.runInBackground(
            [store = usage_, record = *record, &log = log_] { appendOrLog(store, record, log); }));
    }
}

void HistoryKeeper::addCauses(std::span<const FoundCause> found, TimePoint now) {
    std::vector<CauseMinute> minutes = watch_.add(found, now);
    if (!minutes.empty()) {
        detach(scheduler_.runInBackground(
            [store = causes_, minutes = std::move(minutes), &log = log_] {
                for (const CauseMinute& minute : minutes) {
                    appendOrLog(store, minute, log);
                }
            }));
    }
}

} // namespace pacelet
