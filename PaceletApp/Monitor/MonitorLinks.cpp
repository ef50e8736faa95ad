#include "PaceletApp/Monitor/Monitor.h"

#include "Core/Sampling/PSProcessSource.h"
#include "PaceletApp/Monitor/MonitorLog.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace pacelet {

namespace {

constexpr std::int64_t daysOfHistory = 30;

/// A spell that began longer ago than this is told from here on, when the program starts.
constexpr Seconds longestSpell{86400};

/// How long a scan of the background items counts as fresh.
constexpr Seconds freshWhileVisible{60};
constexpr Seconds freshWhileHidden{600};

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

std::vector<BackgroundItem> scanItems(ToolRunner& tools, const std::string& home,
                                      const std::string& root, BackgroundItemSource* source,
                                      const std::optional<Snapshot>& snapshot) {
    std::vector<BackgroundItem> items = BackgroundItemsReader::scan(home, root);
    if (source != nullptr) {
        std::ranges::move(source->items(), std::back_inserter(items));
    }
    BackgroundItemsReader::RunningJobs jobs;
    try {
        jobs = PSProcessSource::launchctlList(tools);
    } catch (const LaunchError&) {
        // Without the tool's list, the items are matched by the paths of their programs alone.
        jobs.clear();
    }
    static const std::vector<ProcessSample> none;
    return BackgroundItemsReader::markRunning(std::move(items), jobs,
                                              snapshot ? snapshot->processes : none);
}

} // namespace

void Monitor::readMacOnce() {
    if (mac() || readingMac_) {
        return;
    }
    readingMac_ = true;
    detach(readMac(this, scheduler_));
}

QCoro::Task<> Monitor::readMac(QPointer<Monitor> monitor, Scheduler& scheduler) {
    Platform& platform = monitor->platform_;
    auto reading = scheduler.runInBackground([&tools = platform.tools, &kernel = platform.kernel] {
        return MacInfo::read(tools, kernel);
    });
    MacInfo read = co_await reading;
    if (!monitor) {
        co_return;
    }
    monitor->readingMac_ = false;
    monitor->mac.set(std::move(read));
    monitor->publish();
    if (!monitor) {
        co_return;
    }
    auto tidying = scheduler.runInBackground(
        [usage = monitor->usageStore_, causes = monitor->causeStore_, now = scheduler.now()] {
            pruneIgnoringFailure(usage, now);
            pruneIgnoringFailure(causes, now);
            return causes.load(now - longestSpell);
        });
    const CauseJournal earlier = co_await tidying;
    if (monitor) {
        monitor->causeWatch_.remember(earlier);
    }
}

void Monitor::recordMinute(const MachineReading& reading, TimePoint now) {
    if (!keepHistory()) {
        return;
    }
    const std::optional<MinuteRecord> record =
        aggregator_.add(reading.signals.cpuLoadPercent, reading.signals.pressure,
                        reading.signals.swapUsedBytes, reading.memory.used(), now);
    if (record) {
        detach(scheduler_.runInBackground(
            [store = usageStore_, record = *record, &log = platform_.log] {
                appendOrLog(store, record, log);
            }));
    }
}

void Monitor::recordCauses(const Diagnosis::WeighedResult& found, TimePoint now) {
    if (!keepHistory()) {
        return;
    }
    std::vector<CauseMinute> minutes = causeWatch_.add(causesOf(found, groups(), stuckApp()), now);
    earlier.set(found.result.findings.empty() ? causeWatch_.latest(now) : std::nullopt);
    if (!minutes.empty()) {
        detach(scheduler_.runInBackground(
            [store = causeStore_, minutes = std::move(minutes), &log = platform_.log] {
                for (const CauseMinute& minute : minutes) {
                    appendOrLog(store, minute, log);
                }
            }));
    }
}

bool Monitor::backgroundItemsAreFresh() {
    if (!itemsLoadedAt_) {
        return false;
    }
    return scheduler_.now() - *itemsLoadedAt_ <
           (windowVisible() ? freshWhileVisible : freshWhileHidden);
}

QCoro::Task<> Monitor::refreshBackgroundItems(bool force) {
    if (!force && backgroundItemsAreFresh()) {
        co_return;
    }
    itemsLoadedAt_ = scheduler_.now();
    const QPointer<Monitor> self{this};
    auto scan = scheduler_.runInBackground(
        [&tools = platform_.tools, home = platform_.home, root = platform_.root,
         source = platform_.backgroundItems,
         previous = previous_] { return scanItems(tools, home, root, source, *previous); });
    std::vector<BackgroundItem> items = co_await scan;
    if (!self) {
        co_return;
    }
    backgroundItems.set(std::move(items));
    backgroundItemsKnown.set(true);
    publish();
}

} // namespace pacelet
