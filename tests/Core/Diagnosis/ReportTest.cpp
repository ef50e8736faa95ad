#include "Core/Diagnosis/Report.h"
#include "Core/Diagnosis/Finding.h"
#include "tests/Support/Processes.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

using testing::app;
using testing::lone;

Finding of(Severity severity, std::optional<std::string> groupID = {}, std::string headline = "") {
    return Finding{{.kind = FindingKind::memory,
                    .severity = severity,
                    .headline = std::move(headline),
                    .groupID = std::move(groupID)}};
}

TEST(Finding, IsKnownByItsKindAndGroup) {
    EXPECT_EQ(of(Severity::low).id(), "memory");
    EXPECT_EQ(of(Severity::low, "/A.app").id(), "memory:/A.app");
    EXPECT_LT(Severity::medium, Severity::high);
}

TEST(Status, FollowsTheGravestFinding) {
    using enum Severity;
    EXPECT_EQ(statusOf({}), Status::quiet);
    for (const auto& [severity, status] : {std::pair{low, Status::busy},
                                           {medium, Status::busy},
                                           {high, Status::struggling},
                                           {critical, Status::struggling}}) {
        const Finding findings[] = {of(low), of(severity), of(low)};
        EXPECT_EQ(statusOf(findings), status) << rawValue(severity);
    }
}

TEST(Report, PrintsStatusCausesSignalsAndGroups) {
    SystemSignals signals;
    signals.cpuLoadPercent = 11.6;
    DiagnosisResult result{Status::busy, {of(Severity::low, {}, "Low.")}};
    EXPECT_EQ(Report::render(result, {}, {}, signals),
              "Status: Busy\nCause: Low.\nCPU 12% · Memory Normal · Heat Normal\n");

    signals.pressure = Pressure::elevated;
    signals.thermal = Thermal::veryHot;
    for (const char* headline : {"b", "c", "d", "e", "f"}) {
        result.findings.push_back(of(Severity::low, {}, headline));
    }
    const std::vector<ProcessGroup> groups{app("Safari", 12.4, 3 << 20, 1), lone(7, "/bin/ls", 0)};
    EXPECT_EQ(Report::render(result, groups, {}, signals),
              "Status: Busy\nCause: Low.\nAlso: b\nAlso: c\nAlso: d\nAlso: e\n"
              "CPU 12% · Memory Elevated · Heat Very hot\n\n"
              "Safari (+1)  12%  3 MB  Safe to quit  — Part of Safari\n"
              "ls  0%  0 KB  Leave it  — Part of macOS");
}

TEST(Report, StaysShort) {
    const std::vector<ProcessGroup> groups(12, lone(7, "/opt/x", 0));
    const std::string text = Report::render({}, groups, {}, {});
    EXPECT_TRUE(text.starts_with("Status: Quiet\nCPU 0% ·"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 12)
        << "two lines, an empty one, ten groups";
    EXPECT_EQ(Report::render({}, {}, {}, {}, {.signals = false}), "Status: Quiet\nCPU 0%\n");
    EXPECT_EQ(Report::statusLabel(Status::struggling), "Struggling");
}

} // namespace
} // namespace pacelet
