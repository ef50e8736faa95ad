#include "PaceletApp/ProcessDetail/DetailLook.h"

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Sampling/Format.h"
#include "PaceletApp/Support/QtText.h"

#include <fmt/format.h>

#include <algorithm>

namespace pacelet {

namespace {

/// How many processes, and how many applications with windows, a panel lists.
constexpr std::size_t rowsListed = 5;

} // namespace

std::vector<ListRole<FigureRow>> FigureRow::roles() {
    using Row = FigureRow;
    return {
        {"name", [](const Row& row) { return row.name; }},
        {"first", [](const Row& row) { return row.first; }},
        {"second", [](const Row& row) { return row.second; }},
    };
}

Family familyOf(const ProcessGroup& group) {
    const std::string& name = group.primary().name;
    if (Diagnosis::isIn(Diagnosis::spotlightFamily, name)) {
        return Family::spotlight;
    }
    return name == "WindowServer" ? Family::windowServer : Family::other;
}

std::vector<FixID> shownFixes(const Explanation& explanation, const ProcessGroup& group,
                              const std::optional<TimePoint>& spotlightBusySince, TimePoint now) {
    const bool spotlightStuck =
        spotlightBusySince && now - *spotlightBusySince > Diagnosis::spotlightStuckAfter;
    std::vector<FixID> shown;
    for (const FixID fix : explanation.fixes) {
        const bool hidden = fix == FixID::explain || (fix == FixID::quitApp && !group.quittable) ||
                            (fix == FixID::rebuildSpotlightIndex && !spotlightStuck);
        if (!hidden) {
            shown.push_back(fix);
        }
    }
    return shown;
}

QString partsLabel(const ProcessGroup& group) {
    if (group.helperCount() == 0) {
        return {};
    }
    return qtText(fmt::format("Busiest parts ({} processes)", group.members.size()));
}

std::vector<FigureRow> busiestParts(const ProcessGroup& group) {
    if (group.helperCount() == 0) {
        return {};
    }
    std::vector<const ProcessUsage*> members;
    members.reserve(group.members.size());
    for (const ProcessUsage& member : group.members) {
        members.push_back(&member);
    }
    std::ranges::stable_sort(members, std::ranges::greater{}, &ProcessUsage::cpuPercent);
    members.resize(std::min(members.size(), rowsListed));
    std::vector<FigureRow> rows;
    for (const ProcessUsage* const member : members) {
        rows.push_back({std::to_string(member->pid), qtText(member->name),
                        qtText(Format::percent(member->cpuPercent)),
                        qtText(Format::bytes(member->memoryBytes))});
    }
    return rows;
}

std::vector<FigureRow> folderRows(std::span<const HeavyFolder> folders) {
    std::vector<FigureRow> rows;
    for (const HeavyFolder& folder : folders) {
        rows.push_back(
            {folder.path, qtText(folder.label), qtText(Format::bytes(folder.bytes)), {}});
    }
    return rows;
}

QString displaysText(const DisplayInfo& displays) {
    std::string text = fmt::format("Displays: {}", displays.count);
    if (displays.scaledCount >= 1) {
        text += fmt::format(" ({} scaled)", displays.scaledCount);
    }
    return qtText(text);
}

std::vector<FigureRow> windowRows(std::span<const WindowCount> counts) {
    std::vector<FigureRow> rows;
    for (const WindowCount& each : counts.first(std::min(counts.size(), rowsListed))) {
        rows.push_back(
            {std::to_string(each.ownerPID),
             qtText(each.ownerName),
             qtText(fmt::format("{} {}", each.count, each.count == 1 ? "window" : "windows")),
             {}});
    }
    return rows;
}

const ProcessGroup* topGroup(std::span<const WindowCount> counts,
                             std::span<const ProcessGroup> groups) {
    if (counts.empty()) {
        return nullptr;
    }
    const auto holdsOwner = [pid = counts.front().ownerPID](const ProcessGroup& group) {
        return std::ranges::find(group.members, pid, &ProcessUsage::pid) != group.members.end();
    };
    const auto found = std::ranges::find_if(groups, holdsOwner);
    return found != groups.end() ? &*found : nullptr;
}

std::optional<FixID> windowsFix(const ProcessGroup& group, OperatingSystem system) {
    if (Diagnosis::isBrowser(group, system)) {
        return FixID::reviewTabs;
    }
    return group.quittable ? std::optional{FixID::quitApp} : std::nullopt;
}

std::string guideAddress(const std::string& website, const std::optional<std::string>& guide) {
    return guide ? website + "/process/" + *guide : std::string{};
}

} // namespace pacelet
