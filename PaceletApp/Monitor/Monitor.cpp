#include "PaceletApp/Monitor/Monitor.h"

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Core/Sampling/SamplingPolicy.h"
#include "PaceletApp/Monitor/BackgroundItemsScan.h"
#include "PaceletApp/Monitor/MonitorLog.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace pacelet {

namespace {

constexpr std::string_view keepHistoryKey = "keepUsageHistory";
constexpr std::string_view sampleFailedMessage = "Couldn't read processes. Retrying.";

/// How long a scan of the background items counts as fresh.
constexpr Seconds freshWhileVisible{60};
constexpr Seconds freshWhileHidden{600};

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
      history_{std::filesystem::path{platform.applicationSupport} / "Pacelet", scheduler,
               platform.log} {
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
    history_.forgetSpells();
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
    recentCPU_.clear();
    start();
}

QCoro::Task<> Monitor::tick() {
    if (ticking_ || !catalog_) {
        co_return;
    }
    const QPointer<Monitor> self{this};
    ticking_ = true;
    // What holds now holds for the whole tick: the window may open or close before it ends.
    const Explaining explaining = windowVisible() ? Explaining::yes : Explaining::no;
    std::optional<Look> look;
    auto looking = lookInBackground(explaining);
    try {
        look = co_await looking;
    } catch (const std::exception& failure) {
        if (self) {
            sampleFailed(failure);
        }
    }
    const bool looked = look.has_value();
    if (self && looked) {
        takeIn(*std::move(look), explaining);
    }
    if (self && looked && windowVisible()) {
        co_await refreshBackgroundItems(false);
    }
    if (self) {
        ticking_ = false;
    }
}

BackgroundTask<Monitor::Look> Monitor::lookInBackground(Explaining explaining) {
    return scheduler_.runInBackground(
        [&tools = platform_.tools, &kernel = platform_.kernel, &clock = platform_.clock,
         previous = previous_, catalog = catalog_, explaining, knowledge = platform_.knowledge,
         before = recentCPU_, replaced = std::exchange(replaced_, {})]() mutable {
            // Thousands of texts: to free them takes longer than the screen should be held up.
            replaced.clear();
            Look look{.reading = readMachine(tools, kernel, clock, *previous, *catalog, explaining,
                                             knowledge),
                      .before = std::move(before)};
            ProcessGroups& latest = look.reading.groups;
            look.history = Smoother::extended(look.before, Smoother::cpuByID(latest));
            latest = Smoother::average(std::move(latest), look.history);
            return look;
        });
}

void Monitor::takeIn(Look look, Explaining explaining) {
    MachineReading& reading = look.reading;
    if (explaining == Explaining::yes) {
        replaced_.push_back(explanations.held());
        explanations.set(std::move(reading.explanations));
    }
    memory.set(reading.memory);
    record(reading);
    replaced_.push_back(std::exchange(
        previous_, std::make_shared<const std::optional<Snapshot>>(std::move(reading.snapshot))));
    signals.set(reading.signals);
    showGroups(std::move(look));
    // Smoothing leaves every group in the list, so its names tell what runs.
    if (stuckApp() && !Diagnosis::isRunning(*stuckApp(), groups())) {
        stuckApp.set({});
    }
    diagnose();
    lastChecked.set(scheduler_.now());
    error.set({});
    publish();
}

void Monitor::record(const MachineReading& reading) {
    const TimePoint now = scheduler_.now();
    CPUHistory longer = cpuHistory();
    addPoint(longer, CPUPoint{now, reading.signals.cpuLoadPercent});
    cpuHistory.set(std::move(longer));
    if (keepHistory()) {
        history_.addLook(reading, now);
    }
}

void Monitor::showGroups(Look look) {
    ProcessGroups& latest = look.reading.groups;
    if (look.before != recentCPU_) {
        // The machine slept and woke in between: what came before must not count.
        look.history = {look.history.back()};
        latest = Smoother::average(std::move(latest), look.history);
    }
    recentCPU_ = std::move(look.history);
    std::ranges::move(look.before, std::back_inserter(replaced_));
    spotlightBusySince.set(busy_.update(Diagnosis::spotlightLoad(latest), scheduler_.now()));
    replaced_.push_back(groups.held());
    groups.set(std::move(latest));
}

void Monitor::diagnose() {
    const DiagnosisInput input{.signals = *signals(),
                               .groups = groups(),
                               .spotlightBusySince = spotlightBusySince(),
                               .lowPowerMode = platform_.kernel.isLowPowerModeEnabled(),
                               .stuckApp = stuckApp(),
                               .now = scheduler_.now()};
    Diagnosis::WeighedResult found = Diagnosis::weigh(input, *catalog_);
    if (keepHistory()) {
        history_.addCauses(causesOf(found, groups(), stuckApp()), input.now);
        earlier.set(found.result.findings.empty() ? history_.latestSpell(input.now) : std::nullopt);
    }
    result.set(std::move(found.result));
}

void Monitor::sampleFailed(const std::exception& failure) {
    error.set(std::string{sampleFailedMessage});
    platform_.log.write(LogLevel::error, logSubsystem, monitorLogCategory,
                        fmt::format("sample failed: {}", failure.what()));
    publish();
}

void Monitor::readMacOnce() {
    if (!std::exchange(macAsked_, true)) {
        detach(readMac(this, scheduler_));
    }
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
    monitor->mac.set(std::move(read));
    monitor->publish();
    if (!monitor) {
        co_return;
    }
    auto tidying = monitor->history_.tidy(scheduler.now());
    const CauseJournal earlier = co_await tidying;
    if (monitor) {
        monitor->history_.remember(earlier);
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
    auto scan = scheduler_.runInBackground([platform = platform_, previous = previous_] {
        return scanBackgroundItems(platform, *previous);
    });
    std::vector<BackgroundItem> items = co_await scan;
    if (!self) {
        co_return;
    }
    backgroundItems.set(std::move(items));
    backgroundItemsKnown.set(true);
    publish();
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
