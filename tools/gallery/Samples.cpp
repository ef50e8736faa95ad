#include "tools/gallery/Samples.h"

#include <QQmlEngine>

#include <map>

namespace pacelet::gallery {

namespace {

constexpr double gib = 1024.0 * 1024 * 1024;

struct Process {
    std::string name;
    bool app = false;
    std::size_t helpers = 0;
    double cpu = 0;
    double memory = 0; ///< in GB
    Explanation explanation;
};

Explanation explained(Verdict verdict, std::string summary, std::string symbol,
                      std::optional<std::string> note = {}) {
    Explanation explanation;
    explanation.verdict = verdict;
    explanation.summary = std::move(summary);
    explanation.symbol = std::move(symbol);
    explanation.idleNote = std::move(note);
    if (verdict == Verdict::safe) {
        explanation.fixes = {FixID::quitApp};
    }
    return explanation;
}

std::vector<Process> someProcesses(bool extreme) {
    std::vector<Process> processes{
        {"Google Chrome", true, 23, 212.4, 6.31,
         explained(Verdict::safe, "A web browser. Each tab runs as a process of its own.",
                   "globe")},
        {"mds_stores", false, 0, 96.1, 0.42,
         explained(Verdict::leave, "Builds the index that Spotlight searches.", "magnifyingglass",
                   "Settles when indexing ends")},
        {"Slack", true, 4, 18.6, 1.12,
         explained(Verdict::safe, "Team chat.", "bubble.left.and.bubble.right")},
        {"WindowServer", false, 0, 14.9, 0.88,
         explained(Verdict::leave, "Draws everything that you see on screen.",
                   "macwindow.on.rectangle")},
        {"node", false, 0, 9.2, 0.31,
         explained(Verdict::review, "Runs JavaScript programs, often for developers.", "terminal")},
    };
    if (extreme) {
        processes[0].name = "Some Studio Professional Edition 2026 for Teams and Classrooms";
        processes[0].helpers = 1204;
        processes[0].cpu = 1431.9;
        processes[0].memory = 1187;
        processes[1].name = "com.example.a-helper-with-a-very-long-reverse-domain-name.agent";
        processes[1].explanation.idleNote = "Settles by itself when the nightly backup has ended";
    }
    return processes;
}

ProcessGroup group(const Process& process) {
    ProcessGroup result;
    result.displayName = process.name;
    result.id = process.app ? "/Applications/" + process.name + ".app" : "pid:" + process.name;
    result.members.resize(process.helpers + 1);
    result.cpuPercent = process.cpu;
    result.memoryBytes = static_cast<std::int64_t>(process.memory * gib);
    result.quittable = process.app;
    return result;
}

Finding finding(FindingKind kind, Severity severity, std::string headline, std::string detail,
                std::optional<FixID> fix, std::optional<std::string> groupID = {},
                std::optional<std::string> note = {}) {
    Finding::Fields fields;
    fields.kind = kind;
    fields.severity = severity;
    fields.headline = std::move(headline);
    fields.detail = std::move(detail);
    fields.primaryFix = fix;
    fields.groupID = std::move(groupID);
    fields.leaveNote = std::move(note);
    return Finding{std::move(fields)};
}

std::vector<Finding> someFindings(const QString& state, const std::vector<ProcessGroup>& groups) {
    const ProcessGroup& first = groups.front();
    if (state == u"busy") {
        return {finding(FindingKind::spotlight, Severity::medium,
                        "Spotlight is indexing your files.",
                        "It has kept two cores busy for 12 minutes. It usually settles by itself.",
                        std::nullopt, {}, "Settles when indexing ends")};
    }
    if (state == u"struggling" || state == u"long") {
        return {
            finding(FindingKind::cpuHog, Severity::critical,
                    first.displayName + " is using most of your processor.",
                    "It has kept more than two cores busy for several minutes. Quitting it frees "
                    "them at once.",
                    FixID::quitApp, first.id),
            finding(FindingKind::memory, Severity::high, "Your Mac is short of memory.", "",
                    FixID::quitApp, first.id),
            finding(FindingKind::lowDisk, Severity::medium, "Your disk is nearly full.", "",
                    FixID::openTidyvault),
            finding(FindingKind::spotlight, Severity::medium, "Spotlight is indexing your files.",
                    "", std::nullopt, {}, "Settles when indexing ends"),
            finding(FindingKind::longUptime, Severity::low,
                    "Your Mac has been running for 31 days.", "", FixID::restartMac),
        };
    }
    return {};
}

SystemSignals someSignals(const QString& state) {
    SystemSignals signals;
    signals.memoryTotalBytes = static_cast<std::int64_t>(16 * gib);
    signals.cpuLoadPercent = state == u"quiet" ? 7 : 64;
    if (state == u"struggling" || state == u"long") {
        signals.cpuLoadPercent = 97;
        signals.pressure = Pressure::critical;
        signals.thermal = Thermal::warm;
    }
    return signals;
}

} // namespace

OverviewModel* Samples::overview(const QString& state) {
    auto* model = new OverviewModel{this};
    QQmlEngine::setObjectOwnership(model, QQmlEngine::CppOwnership);
    if (state == u"checking") {
        return model;
    }
    std::vector<ProcessGroup> groups;
    std::map<std::string, Explanation> explanations;
    for (const Process& process : someProcesses(state == u"long")) {
        groups.push_back(group(process));
        explanations[groups.back().id] = process.explanation;
    }
    DiagnosisResult result;
    result.findings = someFindings(state, groups);
    result.status = statusOf(result.findings);
    const auto explanation = [&](const ProcessGroup& each) { return &explanations[each.id]; };
    model->show({result, groups, explanation, someSignals(state), fromUnixTime(100), false,
                 fromUnixTime(103)});
    return model;
}

} // namespace pacelet::gallery
