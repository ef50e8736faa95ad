#include "PaceletApp/UsageView/UsageRecords.h"

#include "PaceletApp/Scheduler/Detach.h"

#include <utility>

namespace pacelet {

namespace {

constexpr Seconds refreshInterval{60};
constexpr Seconds week{7 * 86400.0};

/// The week that the advice looks at. It ends now: what a run with a wrong clock wrote ahead of its
/// time would count for as long as that time has not come.
std::vector<MinuteRecord> lastWeek(const UsageStore& store, TimePoint now) {
    std::vector<MinuteRecord> records = store.load(now - week);
    const double minuteNow = unixTime(now) / secondsPerMinute;
    std::erase_if(
        records, [&](const MinuteRecord& each) { return static_cast<double>(each.t) > minuteNow; });
    return records;
}

LoadedRecords load(const UsageStore& store, const CauseStore& causes, const UsageRange& range,
                   TimePoint now) {
    const Seconds length{static_cast<double>(range.hours) * 3600};
    return {range, now, store.load(now - length), lastWeek(store, now), causes.load(now - length)};
}

QCoro::Task<> refresh(Scheduler& scheduler, UsageStore store, CauseStore causes, UsageRange range,
                      UsageRecords::Receiver receive, std::stop_token stop) {
    // Whoever owns what the receiver refers to asks for the stop before it dies.
    while (!stop.stop_requested()) {
        auto loading = scheduler.runInBackground([store, causes, range, now = scheduler.now()] {
            return load(store, causes, range, now);
        });
        LoadedRecords records = co_await loading;
        if (stop.stop_requested()) {
            co_return;
        }
        receive(std::move(records));
        co_await scheduler.sleep(refreshInterval, stop);
    }
}

} // namespace

UsageRecords::UsageRecords(Scheduler& scheduler, UsageStore store, CauseStore causes,
                           Receiver receive)
    : scheduler_{scheduler},
      store_{std::move(store)},
      causes_{std::move(causes)},
      receive_{std::move(receive)} {}

void UsageRecords::setRange(const UsageRange& range) {
    range_ = range;
    if (running_) {
        restart();
    }
}

void UsageRecords::setActive(bool active) {
    if (active == running_.has_value()) {
        return;
    }
    if (active) {
        restart();
    } else {
        running_.reset();
    }
}

void UsageRecords::restart() {
    running_.emplace();
    detach(refresh(scheduler_, store_, causes_, range_, receive_, running_->token()));
}

} // namespace pacelet
