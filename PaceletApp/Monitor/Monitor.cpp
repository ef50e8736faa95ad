#include "PaceletApp/Monitor/Monitor.h"

#include "Core/Knowledge/CatalogFile.h"
#include "Core/Sampling/SamplingPolicy.h"

#include <algorithm>
#include <utility>

namespace pacelet {

namespace {

constexpr std::string_view keepHistoryKey = "keepUsageHistory";

std::shared_ptr<const ProcessCatalog> share(std::optional<ProcessCatalog> catalog) {
    return catalog ? std::make_shared<const ProcessCatalog>(std::move(*catalog)) : nullptr;
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
                 std::optional<ProcessCatalog> catalog, QObject* parent)
    : QObject{parent}, platform_{platform}, scheduler_{scheduler}, catalog_{share(
                                                                       std::move(catalog))},
      previous_{std::make_shared<const std::optional<Snapshot>>()},
      usageStore_{.directory = std::filesystem::path{platform.applicationSupport} / "Pacelet"} {
    keepHistory_ = platform_.preferences.boolean(keepHistoryKey).value_or(true);
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
                               CancellationToken token) {
    co_await scheduler.nextTurn(token);
    while (monitor && !token.isCancelled()) {
        if (!monitor->isPaused_) {
            co_await monitor->tick();
        }
        if (!monitor) {
            co_return;
        }
        const Seconds interval =
            SamplingPolicy::interval(monitor->windowVisible_, monitor->menuOpen_,
                                     monitor->platform_.kernel.isLowPowerModeEnabled());
        co_await scheduler.sleep(interval, token);
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
    store(Field::isPaused, isPaused_, !isPaused_);
    if (!isPaused_) {
        detach(tickSoon(this, scheduler_));
    }
    publish();
}

void Monitor::setWindowVisible(bool visible) {
    if (visible == windowVisible_) {
        return;
    }
    store(Field::windowVisible, windowVisible_, visible);
    if (!visible) {
        store(Field::explanations, explanations_, {});
        store(Field::backgroundItems, backgroundItems_, {});
        itemsLoadedAt_.reset();
    }
    restartLoop();
    publish();
}

void Monitor::setMenuOpen(bool open) {
    if (open == menuOpen_) {
        return;
    }
    store(Field::menuOpen, menuOpen_, open);
    restartLoop();
    publish();
}

void Monitor::setStuckApp(std::optional<std::string> name) {
    store(Field::stuckApp, stuckApp_, std::move(name));
    publish();
}

void Monitor::setKeepHistory(bool keep) {
    store(Field::keepHistory, keepHistory_, keep);
    platform_.preferences.setBoolean(keepHistoryKey, keep);
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

const ProcessGroup* Monitor::group(const std::optional<std::string>& id) const {
    if (!id) {
        return nullptr;
    }
    const auto found = std::ranges::find(groups_, *id, &ProcessGroup::id);
    return found == groups_.end() ? nullptr : &*found;
}

const ProcessUsage* Monitor::usage(std::int32_t pid) const {
    for (const ProcessGroup& group : groups_) {
        const auto found = std::ranges::find(group.members, pid, &ProcessUsage::pid);
        if (found != group.members.end()) {
            return &*found;
        }
    }
    return nullptr;
}

std::optional<Explanation> Monitor::explanation(const ProcessGroup& group) const {
    if (const auto found = explanations_.find(group.id); found != explanations_.end()) {
        return found->second;
    }
    if (catalog_) {
        return catalog_->explain(group);
    }
    return std::nullopt;
}

void Monitor::publish() {
    using Notification = void (Monitor::*)();
    static constexpr std::array<Notification, fieldCount> notifications{
        &Monitor::groupsChanged,        &Monitor::signalsChanged,
        &Monitor::resultChanged,        &Monitor::lastCheckedChanged,
        &Monitor::errorChanged,         &Monitor::spotlightBusySinceChanged,
        &Monitor::explanationsChanged,  &Monitor::cpuHistoryChanged,
        &Monitor::memoryChanged,        &Monitor::isPausedChanged,
        &Monitor::windowVisibleChanged, &Monitor::menuOpenChanged,
        &Monitor::stuckAppChanged,      &Monitor::backgroundItemsChanged,
        &Monitor::macChanged,           &Monitor::keepHistoryChanged};
    const QPointer<Monitor> self{this};
    // Taken first, as a listener may write further fields, which are then told from within.
    const auto changed = std::exchange(changed_, {});
    for (std::size_t field = 0; field < fieldCount && self; ++field) {
        if (changed[field]) {
            Q_EMIT(this->*notifications[field])();
        }
    }
}

} // namespace pacelet
