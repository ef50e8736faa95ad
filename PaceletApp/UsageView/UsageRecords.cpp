#include "PaceletApp/UsageView/UsageRecords.h"

#include "PaceletApp/Scheduler/Detach.h"

#include <utility>

namespace pacelet {

namespace {

constexpr Seconds refreshInterval{60};
constexpr Seconds week{7 * 86400.0};

LoadedRecords load(const UsageStore& store, const UsageRange& range, TimePoint now) {
    const Seconds length{static_cast<double>(range.hours) * 3600};
    return {range, now, store.load(now - length), store.load(now - week)};
}

QCoro::Task<> refresh(Scheduler& scheduler, UsageStore store, UsageRange range,
                      UsageRecords::Receiver receive, CancellationToken token) {
    // Whoever owns what the receiver refers to cancels before it dies.
    while (!token.isCancelled()) {
        auto loading = scheduler.runInBackground(
            [store, range, now = scheduler.now()] { return load(store, range, now); });
        LoadedRecords records = co_await loading;
        if (token.isCancelled()) {
            co_return;
        }
        receive(std::move(records));
        co_await scheduler.sleep(refreshInterval, token);
    }
}

} // namespace

UsageRecords::UsageRecords(Scheduler& scheduler, UsageStore store, Receiver receive)
    : scheduler_{scheduler}, store_{std::move(store)}, receive_{std::move(receive)} {}

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
    detach(refresh(scheduler_, store_, range_, receive_, running_->token()));
}

} // namespace pacelet
