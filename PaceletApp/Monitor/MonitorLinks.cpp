#include "PaceletApp/Monitor/Monitor.h"

#include "Core/Sampling/PSProcessSource.h"
#include "PaceletApp/Monitor/MonitorLog.h"

#include <fmt/format.h>

#include <utility>

namespace pacelet {

namespace {

constexpr std::int64_t daysOfHistory = 30;

/// How long a scan of the background items counts as fresh.
constexpr Seconds freshWhileVisible{60};
constexpr Seconds freshWhileHidden{600};

std::vector<BackgroundItem> scanItems(ToolRunner& tools, const std::string& home,
                                      const std::string& root,
                                      const std::optional<Snapshot>& snapshot) {
    std::vector<BackgroundItem> items = BackgroundItemsReader::scan(home, root);
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
    if (mac_ || readingMac_) {
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
    MacInfo mac = co_await reading;
    if (!monitor) {
        co_return;
    }
    monitor->readingMac_ = false;
    monitor->store(Field::mac, monitor->mac_, std::optional{std::move(mac)});
    monitor->publish();
    if (!monitor) {
        co_return;
    }
    auto pruning = scheduler.runInBackground([store = monitor->usageStore_, now = scheduler.now()] {
        try {
            store.prune(daysOfHistory, now);
        } catch (const UsageStoreError&) {
            // What could not be removed now is tried again at the next start.
            return;
        }
    });
    co_await pruning;
}

void Monitor::recordMinute(const SystemSignals& signals, const MemoryBreakdown& memory,
                           TimePoint now) {
    if (!keepHistory_) {
        return;
    }
    const std::optional<MinuteRecord> record = aggregator_.add(
        signals.cpuLoadPercent, signals.pressure, signals.swapUsedBytes, memory.used(), now);
    if (!record) {
        return;
    }
    detach(
        scheduler_.runInBackground([store = usageStore_, record = *record, &log = platform_.log] {
            try {
                store.append(record);
            } catch (const UsageStoreError& error) {
                log.write(LogLevel::error, logSubsystem, monitorLogCategory,
                          fmt::format("history write failed: {}", error.what()));
            }
        }));
}

bool Monitor::backgroundItemsAreFresh() {
    if (!itemsLoadedAt_) {
        return false;
    }
    return scheduler_.now() - *itemsLoadedAt_ <
           (windowVisible_ ? freshWhileVisible : freshWhileHidden);
}

QCoro::Task<> Monitor::refreshBackgroundItems(bool force) {
    if (!force && backgroundItemsAreFresh()) {
        co_return;
    }
    itemsLoadedAt_ = scheduler_.now();
    const QPointer<Monitor> self{this};
    auto scan = scheduler_.runInBackground(
        [&tools = platform_.tools, home = platform_.home, root = platform_.root,
         previous = previous_] { return scanItems(tools, home, root, *previous); });
    std::vector<BackgroundItem> items = co_await scan;
    if (!self) {
        co_return;
    }
    store(Field::backgroundItems, backgroundItems_, std::move(items));
    publish();
}

} // namespace pacelet
