#include "tools/torture/Ledger.h"

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Sampling/AppGrouper.h"
#include "Core/Support/Text.h"
#include "tools/torture/Watch.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace pacelet::torture {

namespace {

/// The figures are means of three looks, and the first of them may reach back to before.
constexpr int looksUntilTrue = 4;

/// What the figures of the tools are rounded to, and a swing while they were read.
constexpr double slack = 0.06;

/// The tools count in hundredths of a second, which says little of a shorter time.
constexpr double hundredth = 0.01;
constexpr Seconds leastInterval{2};

/// What is never ended, kept apart from the program's own list on purpose.
constexpr std::array<std::string_view, 5> protectedPlaces{"/System/", "/usr/", "/sbin/", "/bin/",
                                                          "/Applications/Pacelet.app"};

} // namespace

Ledger::Ledger(Session& session)
    : session_{session} {
    Monitor& monitor = session.application().monitor();
    QObject::connect(&monitor, &Monitor::changed, &listener_, [this, &monitor](const Fields& told) {
        if (told.hold(monitor.lastChecked)) {
            lookEnded();
        }
    });
}

void Ledger::setFailing(bool failing) {
    failing_ = failing;
    disturb();
}

void Ledger::note(const std::string& fault) {
    if (fault_.empty()) {
        fault_ = fault;
    }
}

void Ledger::lookEnded() {
    ++looks_;
    keepMinute();
    const auto world = session_.mac().machine.lock();
    const bool isRushed = world->time.awake - lastAwake_ < leastInterval;
    // Every process's share of what a look rounds, in percent of the machine.
    rounding_ = 50 * hundredth * static_cast<double>(world->processes.all().size()) /
                (world->time.awake - lastAwake_).count() /
                static_cast<double>(world->hardware.cores);
    std::vector<ProcessUsage> usages = measure(*world);
    calmLooks_ = failing_ || isRushed ? 0 : calmLooks_ + 1;
    judge(*world, std::move(usages));
}

/// What every process has used since the last look: of the machine itself, not of its tools.
std::vector<ProcessUsage> Ledger::measure(const Simulated::World& world) {
    const Seconds awake = world.time.awake;
    std::map<std::int32_t, Seconds> times;
    std::vector<ProcessUsage> usages;
    for (const Simulated::Process& process : world.processes.all()) {
        const Seconds used = process.cpuTime(awake);
        const auto before = lastTimes_.find(process.pid);
        const bool isKnown =
            before != lastTimes_.end() && awake > lastAwake_ && before->second <= used;
        ProcessUsage usage;
        usage.pid = process.pid;
        usage.uid = process.user.uid;
        usage.path = process.path;
        usage.name = process.name();
        usage.cpuPercent =
            isKnown ? (used - before->second) / (awake - lastAwake_) * 100 : process.load.at(awake);
        usage.memoryBytes =
            process.user.uid == Simulated::ann.uid ? process.footprint : process.resident;
        usages.push_back(std::move(usage));
        times.emplace(process.pid, used);
    }
    lastTimes_ = std::move(times);
    lastAwake_ = awake;
    return usages;
}

void Ledger::judge(const Simulated::World& world, std::vector<ProcessUsage> usages) {
    double total = 0;
    for (const ProcessUsage& usage : usages) {
        total += usage.cpuPercent;
    }
    std::vector<ProcessGroup> groups = AppGrouper::group(std::move(usages), Simulated::ann.uid);
    history_.push_back(Smoother::cpuByID(groups));
    if (history_.size() > Smoother::window) {
        history_.erase(history_.begin());
    }
    if (calmLooks_ < looksUntilTrue) {
        return;
    }
    ++judged_;
    groups = Smoother::average(std::move(groups), history_);
    const Monitor& monitor = session_.application().monitor();
    const SystemSignals& signals = *monitor.signals();
    const double load = SystemSignals::cpuLoad(total, world.hardware.cores);
    if (std::abs(signals.cpuLoadPercent - load) > rounding_ + slack * load) {
        note(fmt::format("figures: a load of {:.1f}% instead of {:.1f}%", signals.cpuLoadPercent,
                         load));
    }
    if (signals.swapUsedBytes != world.vitals.swapUsed ||
        signals.diskFreeBytes != world.vitals.diskFree ||
        signals.thermal != thermalFromState(world.vitals.thermalState) ||
        signals.pressure != pressureFromSysctlLevel(world.vitals.pressureLevel)) {
        note("figures: swap, disk, heat or pressure is another");
    }
    std::set<std::string> causes;
    for (const double scale : {1 - slack, 1.0, 1 + slack}) {
        causes.merge(firstCauses(world, groups, scale));
    }
    const Finding* const hero = monitor.result().hero();
    const std::string told = hero != nullptr ? hero->id() : "";
    if (!causes.contains(told)) {
        note(fmt::format("hero: \"{}\" instead of \"{}\"", told, fmt::join(causes, "\", \"")));
    }
}

/// The ids of what may come first when every process uses so much more or less: the first cause,
/// and those that a few percent keep from its place.
std::set<std::string> Ledger::firstCauses(const Simulated::World& world,
                                          std::vector<ProcessGroup> groups, double scale) const {
    for (ProcessGroup& group : groups) {
        group.cpuPercent *= scale;
    }
    const Monitor& monitor = session_.application().monitor();
    SystemSignals signals;
    signals.coreCount = world.hardware.cores;
    signals.pressure = pressureFromSysctlLevel(world.vitals.pressureLevel);
    signals.swapUsedBytes = world.vitals.swapUsed;
    signals.thermal = thermalFromState(world.vitals.thermalState);
    signals.diskFreeBytes = world.vitals.diskFree;
    signals.diskTotalBytes = world.hardware.diskBytes;
    signals.uptime = world.uptime().count();
    const auto [result, weights] =
        Diagnosis::weigh({.signals = signals,
                          .groups = groups,
                          .spotlightBusySince = monitor.spotlightBusySince(),
                          .lowPowerMode = world.vitals.lowPower,
                          .stuckApp = monitor.stuckApp(),
                          .now = world.time.wall},
                         *monitor.catalog());
    std::set<std::string> ids;
    for (std::size_t place = 0; place < weights.size(); ++place) {
        const Finding& finding = result.findings[place];
        if (finding.severity() == result.hero()->severity() &&
            weights[place] >= weights.front() * (1 - 2 * slack) - 1) {
            ids.insert(finding.id());
        }
    }
    return ids.empty() ? std::set<std::string>{""} : ids;
}

void Ledger::keepMinute() {
    if (!session_.application().monitor().keepHistory()) {
        return;
    }
    const double now = unixTime(session_.scheduler().now());
    const auto minute = static_cast<std::int64_t>(std::floor(now / 60));
    if (openMinute_ && *openMinute_ != minute) {
        writing_.insert(*openMinute_);
    }
    openMinute_ = minute;
}

void Ledger::checkLooks() {
    hold(fault_.empty(), fault_.substr(0, fault_.find(':')),
         fault_.substr(std::min(fault_.find(':') + 2, fault_.size())));
}

void Ledger::checkDeeds(const std::vector<std::string>& agreed) {
    const Simulated::Records records = session_.mac().machine.lock()->records;
    std::set<std::string> now;
    for (; seenQuits_ < records.quits.size(); ++seenQuits_) {
        const auto& [path, force] = records.quits[seenQuits_];
        const bool isProtected = std::ranges::any_of(
            protectedPlaces, [&](std::string_view place) { return path.starts_with(place); });
        hold(!isProtected, "quit", path + " is protected");
        const std::string name{withoutExtension(lastPathComponent(path))};
        now.insert(force ? name + " isn't responding." : "Quit " + name + "?");
    }
    if (std::exchange(seenTabs_, records.closedTabs) != records.closedTabs) {
        now.insert("tabs");
    }
    for (const std::string& title : now) {
        ++done_[title];
    }
    done_["Rebuild the Spotlight index?"] = static_cast<int>(records.indexRebuilds);
    done_["restart"] = static_cast<int>(records.restartRequests);
    std::map<std::string, int> allowed;
    for (const std::string& title : agreed) {
        const bool closes = title.starts_with("Close ") || title.starts_with("Merge ");
        ++allowed[closes ? "tabs" : title.starts_with("Restart your ") ? "restart" : title];
    }
    deeds_ = 0;
    for (const auto& [title, times] : done_) {
        deeds_ += times;
        hold(times <= allowed[title], "agreed",
             fmt::format("{} times \"{}\", agreed to {} times", times, title, allowed[title]));
    }
    for (const Simulated::LogMessage& entry : records.log) {
        const bool isKnown = entry.message.starts_with("sample failed: ") ||
                             entry.message.starts_with("history write failed: ") ||
                             entry.message.starts_with("quit outcome: ");
        hold(isKnown, "words", entry.message);
    }
    sortMinutes(allowed["Clear usage history?"]);
}

void Ledger::sortMinutes(int cleared) {
    // What the user wants gone is gone, and what was written meanwhile may be gone as well.
    if (std::exchange(cleared_, cleared) != cleared) {
        clearing_ = true;
        written_.clear();
    }
    const bool isBlocked =
        session_.mac().machine.lock()->failures.has<Simulated::FolderUnwritable>();
    if (clearing_ || isBlocked) {
        writing_.clear();
    }
    if (session_.scheduler().pendingJobs() == 0) {
        clearing_ = false;
        written_.merge(writing_);
        writing_.clear();
    }
}

void Ledger::checkHistory() {
    std::set<std::int64_t> kept;
    for (const MinuteRecord& record :
         session_.application().monitor().usageStore().load(fromUnixTime(0))) {
        kept.insert(record.t);
    }
    for (const std::int64_t minute : written_) {
        hold(kept.contains(minute), "history", fmt::format("minute {} is lost", minute));
    }
}

} // namespace pacelet::torture
