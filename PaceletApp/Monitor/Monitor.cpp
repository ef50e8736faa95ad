#include "PaceletApp/Monitor/Monitor.h"

#include "Core/Knowledge/CatalogFile.h"
#include "Core/Sampling/SamplingPolicy.h"

#include <algorithm>
#include <utility>

namespace pacelet {

namespace {

constexpr std::string_view keepHistoryKey = "keepUsageHistory";

std::shared_ptr<const ProcessCatalog> share(const std::optional<ProcessCatalog>& catalog,
                                            const Platform& platform) {
    return catalog ? std::make_shared<const ProcessCatalog>(
                         catalog->on(platform.system, platform.abilities))
                   : nullptr;
}

} // namespace

std::optional<ProcessCatalog> loadCatalog(const ResourceLocations& locations) {
    try {
        return ProcessCatalog::bundled(locations);
    } catch (const CatalogError&) {
        // The window says that there is none, and nothing is sampled.
        return std::nullopt;
    }
}

Monitor::Monitor(const Platform& platform, Scheduler& scheduler,
                 const std::optional<ProcessCatalog>& catalog, QObject* parent)
    : QObject{parent},
      platform_{platform},
      scheduler_{scheduler},
      catalog_{share(catalog, platform)},
      previous_{std::make_shared<const std::optional<Snapshot>>()},
      usageStore_{.directory = std::filesystem::path{platform.applicationSupport} / "Pacelet"},
      causeStore_{.directory = usageStore_.directory} {
    const auto stored = platform_.preferences.boolean(keepHistoryKey);
    keepHistory.set(stored.value_or(true));
    if (!stored && platform_.preferences.trouble() == PreferencesTrouble::flawed) {
        // It may have been switched off, and must not come on by itself, now or at the next start.
        setKeepHistory(false);
    }
    changes_.take();
}

Monitor::~Monitor() = default;

void Monitor::start() {
    if (loop_ || !catalog_) {
        return;
    }
    observeSleep();
    readMacOnce();
    loop_.emplace();
    detach(runLoop(this, scheduler_, loop_->token()));
}

QCoro::Task<> Monitor::runLoop(QPointer<Monitor> monitor, Scheduler& scheduler,
                               std::stop_token stop) {
    co_await scheduler.nextTurn(stop);
    while (monitor && !stop.stop_requested()) {
        if (!monitor->isPaused()) {
            co_await monitor->tick();
        }
        if (!monitor) {
            co_return;
        }
        const Seconds interval =
            SamplingPolicy::interval(monitor->windowVisible(), monitor->menuOpen(),
                                     monitor->platform_.kernel.isLowPowerModeEnabled());
        co_await scheduler.sleep(interval, stop);
    }
}

void Monitor::stopLoop() {
    loop_.reset();
}

void Monitor::restartLoop() {
    stopLoop();
    start();
}

QCoro::Task<> Monitor::tickSoon(QPointer<Monitor> monitor, Scheduler& scheduler) {
    co_await scheduler.nextTurn();
    if (monitor) {
        co_await monitor->tick();
    }
}

void Monitor::checkNow() {
    detach(tickSoon(this, scheduler_));
}

void Monitor::togglePause() {
    isPaused.set(!isPaused());
    if (!isPaused()) {
        detach(tickSoon(this, scheduler_));
    }
    publish();
}

void Monitor::setWindowVisible(bool visible) {
    if (visible == windowVisible()) {
        return;
    }
    windowVisible.set(visible);
    if (!visible) {
        explanations.set({});
        backgroundItems.set({});
        backgroundItemsKnown.set(false);
        itemsLoadedAt_.reset();
    }
    restartLoop();
    publish();
}

void Monitor::setMenuOpen(bool open) {
    if (open == menuOpen()) {
        return;
    }
    menuOpen.set(open);
    restartLoop();
    publish();
}

void Monitor::setStuckApp(std::optional<std::string> name) {
    stuckApp.set(std::move(name));
    publish();
}

void Monitor::setKeepHistory(bool keep) {
    keepHistory.set(keep);
    if (!keep) {
        earlier.set({});
    }
    platform_.preferences.setBoolean(keepHistoryKey, keep);
    publish();
}

void Monitor::forgetEarlier() {
    causeWatch_.forget();
    earlier.set({});
    publish();
}

void Monitor::observeSleep() {
    if (sleepObservers_) {
        return;
    }
    const QPointer<Monitor> monitor{this};
    sleepObservers_ = platform_.workspace.observeSleep(
        [monitor] {
            if (monitor) {
                monitor->willSleep();
            }
        },
        [monitor] {
            if (monitor) {
                monitor->didWake();
            }
        });
}

void Monitor::willSleep() {
    stopLoop();
}

void Monitor::didWake() {
    // The sleep itself must not enter the CPU figures.
    previous_ = std::make_shared<const std::optional<Snapshot>>();
    history_.clear();
    start();
}

std::shared_ptr<const ProcessGroup> Monitor::group(const std::optional<std::string>& id) const {
    if (!id) {
        return nullptr;
    }
    const auto found = std::ranges::find(groups(), *id, &ProcessGroup::id);
    return found == groups().end() ? nullptr : partOf(groups.held(), *found);
}

std::shared_ptr<const ProcessUsage> Monitor::usage(std::int32_t pid) const {
    for (const ProcessGroup& group : groups()) {
        const auto found = std::ranges::find(group.members, pid, &ProcessUsage::pid);
        if (found != group.members.end()) {
            return partOf(groups.held(), *found);
        }
    }
    return nullptr;
}

std::shared_ptr<const Explanation> Monitor::explanation(const ProcessGroup& group) const {
    if (const auto found = explanations().find(group.id); found != explanations().end()) {
        return partOf(explanations.held(), found->second);
    }
    return catalog_ ? std::make_shared<const Explanation>(catalog_->explain(group)) : nullptr;
}

void Monitor::publish() {
    // Taken first, as a listener may write further fields, which are then told from within.
    const Fields fields = changes_.take();
    if (!fields.empty()) {
        Q_EMIT changed(fields);
    }
}

} // namespace pacelet
