#pragma once

#include "PaceletApp/OverviewView/OverviewModel.h"
#include "tests/PaceletApp/Support/SampleGroup.h"

#include <map>
#include <string>
#include <vector>

namespace pacelet {

/// A machine to show: applications "App 0" and so on, each quittable and explained.
struct SampleMachine {
    DiagnosisResult result;
    std::vector<ProcessGroup> groups;
    std::map<std::string, Explanation> explanations;
    std::optional<SystemSignals> signals = SystemSignals{};
    std::optional<TimePoint> lastChecked = fromUnixTime(100);
    bool paused = false;
    TimePoint now = fromUnixTime(102);

    explicit SampleMachine(std::size_t apps = 0) {
        for (std::size_t number = 0; number < apps; ++number) {
            const double cpu = 50.0 - static_cast<double>(number);
            ProcessGroup group =
                sampleGroup({sampleUsage(1, "App " + std::to_string(number), cpu)}, true);
            group.id = "/Applications/" + group.displayName + ".app";
            Explanation& explanation = explanations[group.id];
            explanation.summary = "Says hello.";
            explanation.verdict = Verdict::safe;
            explanation.fixes = {FixID::quitApp};
            groups.push_back(std::move(group));
        }
    }

    void add(FindingKind kind, Severity severity, std::optional<FixID> fix = {},
             std::optional<std::string> groupID = {}, std::optional<std::string> note = {}) {
        Finding::Fields fields;
        fields.kind = kind;
        fields.severity = severity;
        fields.headline = "Cause " + std::to_string(result.findings.size()) + ".";
        fields.detail = "More of it.";
        fields.primaryFix = fix;
        fields.groupID = std::move(groupID);
        fields.leaveNote = std::move(note);
        result.findings.emplace_back(std::move(fields));
        result.status = statusOf(result.findings);
    }

    void showOn(OverviewModel& model) const {
        model.show({result, groups,
                    [this](const ProcessGroup& group) {
                        const auto found = explanations.find(group.id);
                        return found != explanations.end() ? &found->second : nullptr;
                    },
                    signals, lastChecked.has_value()});
        model.badge()->show(paused, lastChecked, now);
    }
};

/// Writes down each fix that the user asks for, and of which group.
inline void record(OverviewModel& model, std::string& asked) {
    QObject::connect(&model, &OverviewModel::fixWanted,
                     [&asked](FixID fix, const std::optional<std::string>& group) {
                         asked += std::string{rawValue(fix)} + " " + group.value_or("-") + "; ";
                     });
}

} // namespace pacelet
