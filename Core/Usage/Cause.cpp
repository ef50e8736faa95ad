#include "Core/Usage/Cause.h"

#include "Core/Support/EnumTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>

namespace pacelet {

namespace {

struct CauseRow {
    FindingKind value;
    std::string_view title; ///< where the cause has no name of its own
    std::string_view effect;
    /// A family of processes rather than one: which of them is the busiest changes all the time.
    std::span<const std::string_view> family{};
};
constexpr std::array<CauseRow, 17> rows{{
    {FindingKind::heat, "Heat", "Slowed down to cool off"},
    {FindingKind::memory, "Memory", "Memory ran low"},
    {FindingKind::cpuHog, "A process", "Kept the processor busy"},
    {FindingKind::spotlight, "Spotlight", "Updated the search index", Diagnosis::spotlightFamily},
    {FindingKind::photos, "Photos", "Analyzed the library", Diagnosis::photosFamily},
    {FindingKind::windowServer, "WindowServer", "Was busy drawing the screen"},
    {FindingKind::browser, "Browser", "Heavy tabs and extensions"},
    {FindingKind::lowDisk, "Disk", "Little space was left"},
    {FindingKind::longUptime, "Long uptime", "Not restarted for weeks"},
    {FindingKind::lowPower, "Low Power Mode", "Slower to save energy"},
    {FindingKind::stuckApp, "An app", "Didn't quit when asked"},
    {FindingKind::offline, "Internet", "No connection"},
    {FindingKind::weakWiFi, "Wi-Fi", "The signal was weak"},
    {FindingKind::band24, "Wi-Fi", "On 2.4 GHz"},
    {FindingKind::slowLine, "Internet", "The line was slow"},
    {FindingKind::laggy, "Internet", "Laggy when busy"},
    {FindingKind::bandwidthHog, "Internet", "Used most of the connection"},
}};

const ProcessGroup* groupWithID(const std::string& id, std::span<const ProcessGroup> groups) {
    const auto found = std::ranges::find(groups, id, &ProcessGroup::id);
    return found == groups.end() ? nullptr : &*found;
}

Cause causeOf(const Finding& finding, const ProcessGroup* group,
              const std::optional<std::string>& stuckApp) {
    Cause cause{.kind = finding.kind(), .id = {}, .name = {}};
    if (!rowOf(rows, cause.kind).family.empty()) {
        return cause;
    }
    if (group != nullptr) {
        cause.id = group->appPath.value_or("");
        cause.name = group->displayName;
    } else if (cause.kind == FindingKind::stuckApp) {
        cause.name = stuckApp.value_or("");
    }
    return cause;
}

struct HoursAndMinutes {
    std::int64_t hours;
    std::int64_t minutes;
};

HoursAndMinutes rounded(Seconds span) {
    const auto minutes = static_cast<std::int64_t>(std::llround(span.count() / 60));
    return {minutes / 60, minutes % 60};
}

std::string counted(std::int64_t count, std::string_view unit) {
    return fmt::format("{} {}{}", count, unit, count == 1 ? "" : "s");
}

} // namespace

std::vector<FoundCause> causesOf(const Diagnosis::WeighedResult& found,
                                 std::span<const ProcessGroup> groups,
                                 const std::optional<std::string>& stuckApp) {
    std::vector<FoundCause> causes;
    for (std::size_t place = 0; place < found.weights.size(); ++place) {
        const Finding& finding = found.result.findings[place];
        const ProcessGroup* group =
            finding.groupID() ? groupWithID(*finding.groupID(), groups) : nullptr;
        Cause cause = causeOf(finding, group, stuckApp);
        const auto sameCause = [&](const FoundCause& each) { return each.cause == cause; };
        // Several virtual machines may run in one application.
        if (std::ranges::none_of(causes, sameCause)) {
            const bool isMemory = cause.kind == FindingKind::memory && group != nullptr;
            causes.push_back(
                {std::move(cause), finding.severity(),
                 isMemory ? static_cast<double>(group->memoryBytes) : found.weights[place]});
        }
    }
    return causes;
}

const ProcessGroup* runningGroup(const Cause& cause, std::span<const ProcessGroup> groups) {
    const auto family = rowOf(rows, cause.kind).family;
    const auto found = std::ranges::find_if(groups, [&](const ProcessGroup& group) {
        if (!family.empty()) {
            return Diagnosis::isIn(family, group.primary().name);
        }
        return group.appPath.value_or("") == cause.id && group.displayName == cause.name;
    });
    return found == groups.end() ? nullptr : &*found;
}

std::string_view titleOf(const Cause& cause) {
    return cause.name.empty() ? rowOf(rows, cause.kind).title : cause.name;
}

std::string_view plainTitleOf(const Cause& cause) {
    return cause.kind == FindingKind::memory ? "low memory" : titleOf(cause);
}

std::string_view effectOf(FindingKind kind) {
    return rowOf(rows, kind).effect;
}

std::string shortSpan(Seconds span) {
    const auto [hours, minutes] = rounded(span);
    if (hours == 0) {
        return minutes == 0 ? "< 1 min" : fmt::format("{} min", minutes);
    }
    return minutes == 0 ? fmt::format("{} h", hours) : fmt::format("{} h {} min", hours, minutes);
}

std::string fullSpan(Seconds span) {
    const auto [hours, minutes] = rounded(span);
    if (hours == 0) {
        return minutes == 0 ? "under a minute" : counted(minutes, "minute");
    }
    return counted(hours, "hour") + (minutes == 0 ? "" : " and " + counted(minutes, "minute"));
}

std::string timesText(std::int64_t count) {
    return count == 1 ? "once" : fmt::format("{} times", count);
}

} // namespace pacelet
