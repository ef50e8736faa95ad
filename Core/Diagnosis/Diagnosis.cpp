#include "Core/Diagnosis/Diagnosis.h"

#include "Core/Diagnosis/Rules.h"

#include <algorithm>
#include <utility>

namespace pacelet::Diagnosis {

namespace {

WeighedResult ranked(std::vector<Rules::Weighted> weighted) {
    std::ranges::stable_sort(weighted, [](const auto& left, const auto& right) {
        if (left.finding.severity() != right.finding.severity()) {
            return left.finding.severity() > right.finding.severity();
        }
        return left.weight > right.weight;
    });
    WeighedResult all;
    all.result.findings.reserve(weighted.size());
    all.weights.reserve(weighted.size());
    for (Rules::Weighted& entry : weighted) {
        all.result.findings.push_back(std::move(entry.finding));
        all.weights.push_back(entry.weight);
    }
    all.result.status = statusOf(all.result.findings);
    return all;
}

} // namespace

WeighedResult weigh(const DiagnosisInput& input, const ProcessCatalog& catalog) {
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
    return ranked(std::move(run.findings));
}

DiagnosisResult run(const DiagnosisInput& input, const ProcessCatalog& catalog) {
    return weigh(input, catalog).result;
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

bool isBrowser(const ProcessGroup& group, OperatingSystem system) {
    if (!group.appPath) {
        return false;
    }
    const std::span<const std::string_view> all{browserApps};
    const auto known = system == OperatingSystem::macOS ? all.first(browserAppsOnMac) : all;
    return std::ranges::any_of(known, [&](std::string_view app) {
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
