#include "Core/Diagnosis/Rules.h"

#include "Core/Sampling/BusyTracker.h"
#include "Core/Sampling/Format.h"
#include "Core/Support/Checked.h"

#include <algorithm>
#include <string>

namespace pacelet::Diagnosis::Rules {

namespace {

constexpr std::int64_t gibibyte = 1LL << 30;
constexpr double gigabyte = 1e9;
constexpr double secondsPerDay = 86400.0;

/// The groups whose primary member is one of a family, and what they use together.
struct FamilyLoad {
    std::vector<const ProcessGroup*> groups;
    double cpuPercent = 0;

    /// The busiest, the earliest on a tie.
    const ProcessGroup& top() const {
        return **std::ranges::max_element(groups, {},
                                          [](auto* group) { return group->cpuPercent; });
    }
};

/// Sums up a family and marks its groups as handled, unless it stays below `threshold` or does not
/// run at all: then nothing is marked.
std::optional<FamilyLoad> handleFamily(Run& run, std::span<const std::string_view> family,
                                       double threshold) {
    FamilyLoad load;
    for (const ProcessGroup& group : run.input.groups) {
        if (isIn(family, group.primary().name)) {
            load.groups.push_back(&group);
            load.cpuPercent += group.cpuPercent;
        }
    }
    if (load.groups.empty() || load.cpuPercent < threshold) {
        return std::nullopt;
    }
    for (const ProcessGroup* group : load.groups) {
        run.handled.insert(group->id);
    }
    return load;
}

/// The largest group among those that can be quit, else among all; null without groups.
const ProcessGroup* memoryCulprit(std::span<const ProcessGroup> groups) {
    const ProcessGroup* largest = nullptr;
    for (const ProcessGroup& group : groups) {
        const bool better =
            largest == nullptr || (group.quittable && !largest->quittable) ||
            (group.quittable == largest->quittable && group.memoryBytes > largest->memoryBytes);
        if (better) {
            largest = &group;
        }
    }
    return largest;
}

/// Whether memory is short. Pages that lie in the swap from long ago are no sign of it on a machine
/// that tells how much it could hand out, and has plenty.
bool isShortOfMemory(const SystemSignals& signals) {
    constexpr std::int64_t heavySwap = 4 * gibibyte;
    constexpr std::int64_t plentyShare = 5;
    const bool hasPlenty = signals.memoryAvailableBytes &&
                           *signals.memoryAvailableBytes >= signals.memoryTotalBytes / plentyShare;
    return signals.pressure != Pressure::normal ||
           (signals.swapUsedBytes > heavySwap && !hasPlenty);
}

/// The group that eats the memory of a machine which tells what it has left: one that can be quit,
/// unless another is more than twice as large. Null when nobody holds a noteworthy part.
const ProcessGroup* memoryEater(std::span<const ProcessGroup> groups, std::int64_t installed) {
    constexpr std::int64_t noteworthyShare = 10;
    const auto largest = std::ranges::max_element(groups, {}, &ProcessGroup::memoryBytes);
    const ProcessGroup* culprit = memoryCulprit(groups);
    if (culprit == nullptr) {
        return nullptr;
    }
    if (culprit->memoryBytes < largest->memoryBytes / 2) {
        culprit = &*largest;
    }
    return culprit->memoryBytes >= installed / noteworthyShare ? culprit : nullptr;
}

/// A virtual machine's processor time belongs to the application that runs it.
Finding::Fields virtualMachine(const Run& run, const ProcessGroup& busy) {
    Finding::Fields fields;
    fields.headline = "A virtual machine is using " + Format::percent(busy.cpuPercent) + " CPU.";
    const auto host = std::ranges::find_if(run.input.groups, [](const ProcessGroup& group) {
        return group.appPath && isIn(vmHosts, group.displayName);
    });
    if (host != run.input.groups.end()) {
        fields.detail = "It's run by " + host->displayName + ". Quitting " + host->displayName +
                        " frees all of it.";
        fields.groupID = host->id;
        fields.primaryFix = host->quittable ? FixID::quitApp : FixID::explain;
    } else {
        fields.detail = run.catalog.explain(busy).summary;
        fields.groupID = busy.id;
        fields.primaryFix = FixID::explain;
    }
    return fields;
}

Finding::Fields plainHog(const Run& run, const ProcessGroup& group) {
    const Explanation explanation = run.catalog.explain(group);
    const auto acting = std::ranges::find_if(explanation.fixes, [](FixID fix) {
        return fix == FixID::quitApp || fix == FixID::rebuildSpotlightIndex;
    });
    Finding::Fields fields;
    fields.headline =
        group.displayName + " is using " + Format::percent(group.cpuPercent) + " CPU.";
    fields.detail = explanation.summary;
    fields.leaveNote = explanation.idleNote;
    fields.groupID = group.id;
    fields.primaryFix =
        group.quittable && acting != explanation.fixes.end() ? *acting : FixID::explain;
    return fields;
}

/// What comes after the words on a restart.
std::string restartByHand(const Run& run) {
    return run.offers(FixID::restartMac) ? "" : run.say(" Choose Apple menu > Restart.");
}

} // namespace

void stuckApp(Run& run) {
    if (!run.input.stuckApp) {
        return;
    }
    Finding::Fields fields{.kind = FindingKind::stuckApp, .severity = Severity::high};
    fields.headline = run.say(stuckHeadline, *run.input.stuckApp);
    fields.detail =
        std::string{"Some apps can't be closed once they're stuck. A restart clears them."} +
        restartByHand(run);
    fields.primaryFix = FixID::restartMac;
    run.add(std::move(fields), 0);
}

void heat(Run& run) {
    Finding::Fields fields{.kind = FindingKind::heat};
    switch (run.input.signals.thermal) {
    case Thermal::normal:
        return;
    case Thermal::warm:
        fields.severity = Severity::low;
        fields.headline =
            run.say("Your Mac is warm, so macOS is slowing it slightly to cool down.");
        fields.detail =
            run.say("kernel_task holds back other work to cool your Mac. Heavy apps and "
                    "blocked vents make it worse.");
        break;
    case Thermal::hot:
        fields.severity = Severity::high;
        fields.headline = run.say("Your Mac is hot and slowing itself down to cool off.");
        fields.detail =
            run.say("kernel_task holds back other work to cool your Mac. Quit heavy apps and "
                    "give it some air.");
        break;
    case Thermal::veryHot:
        fields.severity = Severity::critical;
        fields.headline =
            run.say("Your Mac is very hot and running much slower to protect itself.");
        fields.detail = "Quit heavy apps, unplug extra displays and give it some air.";
        break;
    }
    fields.leaveNote = "Leave it";
    run.add(std::move(fields), 0);
}

void memory(Run& run) {
    const SystemSignals& signals = run.input.signals;
    if (!isShortOfMemory(signals)) {
        return;
    }
    Finding::Fields fields{.kind = FindingKind::memory};
    fields.severity = signals.pressure == Pressure::critical ? Severity::high : Severity::medium;
    fields.headline = run.say("Your Mac is running low on memory.");
    const bool tellsWhatIsLeft = signals.memoryAvailableBytes.has_value();
    const ProcessGroup* culprit = tellsWhatIsLeft
                                      ? memoryEater(run.input.groups, signals.memoryTotalBytes)
                                      : memoryCulprit(run.input.groups);
    if (culprit == nullptr) {
        fields.detail = tellsWhatIsLeft
                            ? "No single app holds much of it. Only " +
                                  Format::bytes(*signals.memoryAvailableBytes) + " is left."
                            : "Swap in use: " + Format::bytes(signals.swapUsedBytes) + ".";
        run.add(std::move(fields), 0);
        return;
    }
    fields.detail = culprit->displayName + " is using " + Format::bytes(culprit->memoryBytes) + ".";
    fields.groupID = culprit->id;
    if (culprit->quittable) {
        fields.primaryFix = FixID::quitApp;
    }
    run.add(std::move(fields), culprit->cpuPercent);
}

void spotlight(Run& run) {
    const auto load = handleFamily(run, spotlightFamily, BusyTracker::busyLoad);
    if (!load) {
        return;
    }
    const auto& since = run.input.spotlightBusySince;
    const bool stuck = since && run.input.now - *since > spotlightStuckAfter;
    Finding::Fields fields{.kind = FindingKind::spotlight};
    fields.headline = "Spotlight is doing a lot of work.";
    fields.groupID = load->top().id;
    fields.leaveNote = "Settles on its own";
    if (stuck) {
        fields.severity = Severity::high;
        fields.primaryFix = FixID::rebuildSpotlightIndex;
        fields.detail = "Spotlight has been busy for over 3 hours, which usually means it's stuck. "
                        "Rebuilding the index often fixes it.";
    } else {
        fields.severity = Severity::low;
        fields.primaryFix = FixID::openSpotlightSettings;
        fields.detail = load->top().primary().name + " is using " +
                        Format::percent(load->cpuPercent) +
                        " CPU while it updates the search index. That's normal after an update or "
                        "a large file change.";
    }
    run.add(std::move(fields), load->cpuPercent);
}

void photos(Run& run) {
    constexpr double busyLoad = 30.0;
    const auto load = handleFamily(run, photosFamily, busyLoad);
    if (!load) {
        return;
    }
    Finding::Fields fields{.kind = FindingKind::photos, .severity = Severity::low};
    fields.headline = "Photos is analyzing your library.";
    fields.detail =
        run.say("It finds faces and objects in your photos, mostly while your Mac is idle "
                "and plugged in.");
    fields.groupID = load->top().id;
    fields.leaveNote = "Runs while plugged in";
    run.add(std::move(fields), load->cpuPercent);
}

void windowServer(Run& run) {
    constexpr double busyLoad = 40.0;
    const auto server = std::ranges::find_if(run.input.groups, [](const ProcessGroup& group) {
        return group.primary().name == "WindowServer";
    });
    if (server == run.input.groups.end()) {
        return;
    }
    run.handled.insert(server->id);
    if (server->cpuPercent < busyLoad) {
        return;
    }
    Finding::Fields fields{.kind = FindingKind::windowServer, .severity = Severity::medium};
    fields.headline = "WindowServer is busy drawing your screen.";
    fields.detail = "Many windows, external displays or transparency effects keep it busy.";
    fields.groupID = server->id;
    fields.primaryFix = FixID::explain;
    run.add(std::move(fields), server->cpuPercent);
}

void browsers(Run& run) {
    constexpr std::int64_t mostUnremarkableBytes = 1'499'999'999;
    constexpr double busyLoad = 50.0;
    for (const ProcessGroup& group : run.input.groups) {
        if (!isBrowser(group, run.catalog.system)) {
            continue;
        }
        run.handled.insert(group.id);
        if (group.memoryBytes <= mostUnremarkableBytes && group.cpuPercent < busyLoad) {
            continue;
        }
        Finding::Fields fields{.kind = FindingKind::browser, .severity = Severity::medium};
        fields.headline = group.displayName + " and " + std::to_string(group.helperCount()) +
                          " helpers are using " + Format::percent(group.cpuPercent) + " CPU and " +
                          Format::bytes(group.memoryBytes) + ".";
        fields.detail = "Each tab and extension runs as its own helper. Closing tabs you don't "
                        "need frees memory.";
        fields.groupID = group.id;
        fields.primaryFix = FixID::reviewTabs;
        run.add(std::move(fields), group.cpuPercent);
    }
}

void cpuHogs(Run& run) {
    constexpr double busyLoad = 80.0;
    // A hog is grave when it takes a quarter of the machine, and two cores at least.
    constexpr double gravePerCore = 25.0;
    constexpr double graveAtLeast = 200.0;
    const auto cores = static_cast<double>(run.input.signals.coreCount);
    for (const ProcessGroup& group : run.input.groups) {
        if (group.cpuPercent < busyLoad || run.handled.contains(group.id)) {
            continue;
        }
        const bool grave =
            group.cpuPercent >= gravePerCore * cores && group.cpuPercent >= graveAtLeast;
        Finding::Fields fields = group.primary().path.starts_with(virtualizationPrefix)
                                     ? virtualMachine(run, group)
                                     : plainHog(run, group);
        fields.kind = FindingKind::cpuHog;
        fields.severity = grave ? Severity::high : Severity::medium;
        run.add(std::move(fields), group.cpuPercent);
    }
}

void disk(Run& run) {
    constexpr double fullBelow = 15.0;
    constexpr double roomyFrom = 50.0;
    constexpr double healthyShare = 0.1;
    const SystemSignals& signals = run.input.signals;
    if (signals.diskTotalBytes < 1) {
        return;
    }
    const auto freeBytes = static_cast<double>(signals.diskFreeBytes);
    const double healthyBytes = static_cast<double>(signals.diskTotalBytes) * healthyShare;
    const double freeGB = freeBytes / gigabyte;
    Finding::Fields fields{.kind = FindingKind::lowDisk, .primaryFix = FixID::openTidyvault};
    if (freeGB < fullBelow) {
        fields.severity = Severity::high;
        fields.headline = "Your disk is almost full.";
        fields.detail = run.say("Only {} free. macOS slows down when space runs low.",
                                Format::bytes(signals.diskFreeBytes));
    } else if (freeGB < roomyFrom && freeBytes < healthyBytes) {
        fields.severity = Severity::medium;
        fields.headline = "Your disk is getting full.";
        fields.detail =
            run.say("{} free. Keep at least 10% free so macOS has room for memory and updates.",
                    Format::bytes(signals.diskFreeBytes));
    } else {
        return;
    }
    if (!run.offers(FixID::openTidyvault)) {
        fields.detail += " Empty the trash and remove what you no longer need.";
    }
    run.add(std::move(fields), 0);
}

void lowPowerMode(Run& run) {
    if (!run.input.lowPowerMode) {
        return;
    }
    Finding::Fields fields{.kind = FindingKind::lowPower, .severity = Severity::low};
    fields.headline = run.say("Low Power Mode is on, so your Mac runs slower to save energy.");
    fields.detail = run.offers(FixID::openBatterySettings)
                        ? run.say("Turn it off in Battery settings when you need full speed.")
                        : "Switch to a balanced power profile when you need full speed.";
    fields.primaryFix = FixID::openBatterySettings;
    run.add(std::move(fields), 0);
}

void longUptime(Run& run) {
    constexpr std::int64_t manyDays = 15;
    constexpr std::int64_t noteworthySwap = 2 * gibibyte;
    const SystemSignals& signals = run.input.signals;
    const std::int64_t days =
        checkedTruncate(signals.uptime / secondsPerDay, "the uptime is out of range");
    if (days < manyDays || signals.swapUsedBytes <= noteworthySwap) {
        return;
    }
    Finding::Fields fields{.kind = FindingKind::longUptime, .severity = Severity::low};
    fields.headline = run.say("Your Mac hasn't restarted in {} days.", days);
    fields.detail =
        std::string{"A restart clears memory that has built up over time."} + restartByHand(run);
    fields.primaryFix = FixID::restartMac;
    run.add(std::move(fields), 0);
}

} // namespace pacelet::Diagnosis::Rules
