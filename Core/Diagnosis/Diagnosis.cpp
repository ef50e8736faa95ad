#include "Core/Diagnosis/Diagnosis.h"

#include "Core/Diagnosis/Rules.h"

#include <algorithm>
#include <utility>

namespace pacelet::Diagnosis {

namespace {

std::vector<Finding> ranked(std::vector<Rules::Weighted> weighted) {
    std::ranges::stable_sort(weighted, [](const auto& left, const auto& right) {
        if (left.finding.severity() != right.finding.severity()) {
            return left.finding.severity() > right.finding.severity();
        }
        return left.weight > right.weight;
    });
    std::vector<Finding> findings;
    findings.reserve(weighted.size());
    for (Rules::Weighted& entry : weighted) {
        findings.push_back(std::move(entry.finding));
    }
    return findings;
}

} // namespace

DiagnosisResult run(const DiagnosisInput& input, const ProcessCatalog& catalog) {
    Rules::Run run{input, catalog};
    Rules::stuckApp(run);
    Rules::heat(run);
    Rules::memory(run);
    Rules::spotlight(run);
    Rules::photos(run);
    Rules::windowServer(run);
    Rules::browsers(run);
    Rules::cpuHogs(run);
    Rules::disk(run);
    Rules::lowPowerMode(run);
    Rules::longUptime(run);

    DiagnosisResult result;
    result.findings = ranked(std::move(run.findings));
    result.status = statusOf(result.findings);
    return result;
}

double spotlightLoad(std::span<const ProcessGroup> groups) {
    double load = 0;
    for (const ProcessGroup& group : groups) {
        if (isIn(spotlightFamily, group.primary().name)) {
            load += group.cpuPercent;
        }
    }
    return load;
}

bool isBrowser(const ProcessGroup& group) {
    if (!group.appPath) {
        return false;
    }
    return std::ranges::any_of(browserApps, [&](std::string_view app) {
        std::string_view path = *group.appPath;
        if (!path.ends_with(app)) {
            return false;
        }
        path.remove_suffix(app.size());
        return path.ends_with('/');
    });
}

bool isRunning(std::string_view app, std::span<const ProcessGroup> groups) {
    return std::ranges::find(groups, app, &ProcessGroup::displayName) != groups.end();
}

} // namespace pacelet::Diagnosis
