#include "Core/Diagnosis/Report.h"

#include "Core/Sampling/Format.h"
#include "Core/Support/EnumTable.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <vector>

namespace pacelet::Report {

namespace {

struct StatusRow {
    Status value;
    std::string_view label;
};
constexpr std::array<StatusRow, 3> statuses{{
    {Status::quiet, "Quiet"},
    {Status::busy, "Busy"},
    {Status::struggling, "Struggling"},
}};

std::string signalsLine(const SystemSignals& signals, const Known& known) {
    std::vector<std::string> parts;
    if (known.load) {
        parts.push_back("CPU " + Format::percent(signals.cpuLoadPercent));
    }
    if (known.signals) {
        parts.push_back(fmt::format("Memory {}", label(signals.pressure)));
        parts.push_back(fmt::format("Heat {}", label(signals.thermal)));
    }
    return fmt::format("{}", fmt::join(parts, " · "));
}

std::string groupLine(const ProcessGroup& group, const ProcessCatalog& catalog,
                      const Known& known) {
    const Explanation explanation = catalog.explain(group);
    const std::string helpers =
        group.members.size() >= 2 ? fmt::format(" (+{})", group.helperCount()) : "";
    const std::string memory = known.memory ? Format::bytes(group.memoryBytes) + "  " : "";
    return fmt::format("{}{}  {}  {}{}  — {}", group.displayName, helpers,
                       Format::percent(group.cpuPercent), memory, label(explanation.verdict),
                       explanation.title);
}

} // namespace

std::string render(const DiagnosisResult& result, std::span<const ProcessGroup> groups,
                   const ProcessCatalog& catalog, const SystemSignals& signals,
                   const Known& known) {
    std::vector<std::string> lines;
    lines.push_back(fmt::format("Status: {}", statusLabel(result.status)));
    if (const Finding* hero = result.hero()) {
        lines.push_back("Cause: " + hero->headline());
    }
    for (const Finding& finding : result.more()) {
        lines.push_back("Also: " + finding.headline());
    }
    if (known.load || known.signals) {
        lines.push_back(signalsLine(signals, known));
    }
    lines.emplace_back();
    for (const ProcessGroup& group : groups.first(std::min(groups.size(), mostGroups))) {
        lines.push_back(groupLine(group, catalog, known));
    }
    return fmt::format("{}", fmt::join(lines, "\n"));
}

std::string_view statusLabel(Status status) {
    return rowOf(statuses, status).label;
}

} // namespace pacelet::Report
