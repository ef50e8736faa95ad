#include "tools/torture/Ledger.h"

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

/// How long Spotlight is busy until something is wrong with it.
constexpr Seconds stuckAfter{3 * 3600};

double loadOf(const Simulated::World& world, const Shares& shares) {
    double total = 0;
    for (const auto& [pid, percent] : shares) {
        total += percent;
    }
    return std::clamp(total / static_cast<double>(world.hardware.cores), 0.0, 100.0);
}

bool isAbout(double told, double load, double rounding) {
    return std::abs(told - load) <= rounding + slack * load;
}

/// Whether the record is that of this minute, as far as anything is known of it.
bool tells(const MinuteRecord& record, const Minute& minute) {
    constexpr std::array<std::int64_t, 5> ranks{0, 0, 1, 0, 2};
    return !minute.isKnown ||
           (record.n == minute.looks && record.swap == minute.swap &&
            record.pressure == ranks.at(static_cast<std::size_t>(minute.worstPressure)) &&
            isAbout(record.cpu, minute.loads / static_cast<double>(minute.looks),
                    minute.rounding) &&
            isAbout(record.cpuMax, minute.highest, minute.rounding));
}

/// What is never ended, kept apart from the program's own list on purpose.
constexpr std::array<std::string_view, 5> protectedPlaces{"/System/", "/usr/", "/sbin/", "/bin/",
                                                          "/Applications/Pacelet.app"};

} // namespace

Ledger::Ledger(Session& session)
    : session_{session} {
    Monitor& monitor = session.application().monitor();
    QObject::connect(&monitor, &Monitor::changed, &listener_, [this, &monitor](const Fields& told) {
        if (told.hold(monitor.cpuHistory)) {
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
    const auto world = session_.mac().machine.lock();
    const bool isRushed = world->time.awake - lastAwake_ < leastInterval;
    // Every process's share of what a look rounds, in percent of the machine.
    rounding_ = 50 * hundredth * static_cast<double>(world->processes.all().size()) /
                (world->time.awake - lastAwake_).count() /
                static_cast<double>(world->hardware.cores);
    const Shares shares = measure(*world);
    reckoning_.add(*world, shares);
    calmLooks_ = failing_ || isRushed ? 0 : calmLooks_ + 1;
    judge(*world, shares);
    keepMinute(*world, loadOf(*world, shares));
}

/// What every process has used since the last look: of the machine itself, not of its tools.
Shares Ledger::measure(const Simulated::World& world) {
    const Seconds awake = world.time.awake;
    std::map<std::int32_t, Seconds> times;
    Shares shares;
    for (const Simulated::Process& process : world.processes.all()) {
        const Seconds used = process.cpuTime(awake);
        const auto before = lastTimes_.find(process.pid);
        const bool isKnown =
            before != lastTimes_.end() && awake > lastAwake_ && before->second <= used;
        shares[process.pid] =
            isKnown ? (used - before->second) / (awake - lastAwake_) * 100 : process.load.at(awake);
        times.emplace(process.pid, used);
    }
    lastTimes_ = std::move(times);
    lastAwake_ = awake;
    return shares;
}

void Ledger::judge(const Simulated::World& world, const Shares& shares) {
    if (calmLooks_ < looksUntilTrue) {
        return;
    }
    ++judged_;
    const Monitor& monitor = session_.application().monitor();
    const SystemSignals& signals = *monitor.signals();
    const double load = loadOf(world, shares);
    if (!isAbout(signals.cpuLoadPercent, load, rounding_)) {
        note(fmt::format("figures: a load of {:.1f}% instead of {:.1f}%", signals.cpuLoadPercent,
                         load));
    }
    if (signals.swapUsedBytes != world.vitals.swapUsed ||
        signals.diskFreeBytes != world.vitals.diskFree ||
        signals.thermal != thermalFromState(world.vitals.thermalState) ||
        signals.pressure != pressureFromSysctlLevel(world.vitals.pressureLevel)) {
        note("figures: swap, disk, heat or pressure is another");
    }
    const auto& busySince = monitor.spotlightBusySince();
    const Memories memories{.isStuck = monitor.stuckApp().has_value(),
                            .isSpotlightStuck =
                                busySince && world.time.wall - *busySince > stuckAfter,
                            .isLinux = monitor.catalog()->system == OperatingSystem::linuxDesktop};
    std::set<std::string> causes;
    for (const double scale : {1 - slack, 1.0, 1 + slack}) {
        causes.merge(reckoning_.firstCauses(world, shares, memories, scale, 2 * slack));
    }
    const Finding* const hero = monitor.result().hero();
    const std::string told = hero != nullptr ? hero->id() : "";
    if (!causes.contains(told)) {
        note(fmt::format("hero: \"{}\" instead of \"{}\"", told, fmt::join(causes, "\", \"")));
    }
}

void Ledger::keepMinute(const Simulated::World& world, double load) {
    if (!session_.application().monitor().keepHistory()) {
        return;
    }
    const auto t = static_cast<std::int64_t>(std::floor(unixTime(world.time.wall) / 60));
    if (openMinute_ && openMinute_->t != t) {
        writing_.push_back(*std::exchange(openMinute_, {}));
    }
    if (!openMinute_) {
        openMinute_ = Minute{.t = t};
    }
    Minute& minute = *openMinute_;
    ++minute.looks;
    minute.isKnown = minute.isKnown && calmLooks_ >= looksUntilTrue;
    minute.loads += load;
    minute.highest = std::max(minute.highest, load);
    minute.rounding = std::max(minute.rounding, rounding_);
    minute.worstPressure = std::max(minute.worstPressure, world.vitals.pressureLevel);
    minute.swap = world.vitals.swapUsed;
}

void Ledger::checkLooks() {
    hold(fault_.empty(), fault_.substr(0, fault_.find(':')),
         fault_.substr(std::min(fault_.find(':') + 2, fault_.size())));
}

void Ledger::checkDeeds(const std::vector<std::string>& agreed) {
    const Simulated::Records records = session_.mac().machine.lock()->records;
    std::set<std::string> now;
    for (; seenQuits_ < records.quits.size(); ++seenQuits_) {
        const Simulated::QuitRequest& quit = records.quits[seenQuits_];
        const bool isProtected = std::ranges::any_of(
            protectedPlaces, [&](std::string_view place) { return quit.path.starts_with(place); });
        hold(!isProtected, "quit", quit.path + " is protected");
        const std::string name{withoutExtension(lastPathComponent(quit.path))};
        now.insert(quit.force ? name + " isn't responding." : "Quit " + name + "?");
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
        written_.insert(written_.end(), writing_.begin(), writing_.end());
        writing_.clear();
    }
}

void Ledger::checkHistory() {
    const auto records = session_.application().monitor().usageStore().load(fromUnixTime(0));
    hold(std::ranges::is_sorted(records, {}, &MinuteRecord::t), "history", "out of order");
    // A clock that was set back brings a minute twice; one record stands for one of them.
    std::multimap<std::int64_t, const MinuteRecord*> kept;
    for (const MinuteRecord& record : records) {
        kept.emplace(record.t, &record);
    }
    for (const Minute& minute : written_) {
        auto [at, end] = kept.equal_range(minute.t);
        hold(at != end, "history", fmt::format("minute {} is lost", minute.t));
        const MinuteRecord& one = *at->second;
        at = std::find_if(at, end, [&](const auto& each) { return tells(*each.second, minute); });
        hold(at != end, "history",
             fmt::format(
                 "minute {} has {} looks, load {:.1f} to {:.1f}, pressure {}, swap {} instead "
                 "of {}, {:.1f} to {:.1f}, {}, {}",
                 minute.t, one.n, one.cpu, one.cpuMax, one.pressure, one.swap, minute.looks,
                 minute.loads / static_cast<double>(minute.looks), minute.highest,
                 minute.worstPressure, minute.swap));
        kept.erase(at);
    }
}

} // namespace pacelet::torture
