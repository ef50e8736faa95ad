#include "Core/Diagnosis/Finding.h"

#include <gtest/gtest.h>
#include <vector>

namespace pacelet {
namespace {

Finding of(Severity severity, std::optional<std::string> groupID = {}) {
    return Finding{{.kind = FindingKind::memory, .severity = severity, .groupID = groupID}};
}

TEST(Finding, IsKnownByItsKindAndGroup) {
    EXPECT_EQ(of(Severity::low).id(), "memory");
    EXPECT_EQ(of(Severity::low, "/A.app").id(), "memory:/A.app");
    EXPECT_EQ(of(Severity::low), of(Severity::low));
    EXPECT_FALSE(of(Severity::low) == of(Severity::high));
    EXPECT_LT(Severity::medium, Severity::high);
}

TEST(Status, FollowsTheGravestFinding) {
    using enum Severity;
    const std::vector<std::pair<std::vector<Finding>, Status>> cases{
        {{}, Status::quiet},
        {{of(low)}, Status::busy},
        {{of(medium)}, Status::busy},
        {{of(low), of(medium), of(high)}, Status::struggling},
        {{of(critical)}, Status::struggling},
    };
    for (const auto& [findings, status] : cases) {
        EXPECT_EQ(statusOf(findings), status) << findings.size();
    }
}

TEST(DiagnosisResult, LeadsWithOneCauseAndShowsFourMore) {
    DiagnosisResult result;
    EXPECT_EQ(result.hero(), nullptr);
    EXPECT_TRUE(result.more().empty());
    for (std::size_t count = 1; count <= 7; ++count) {
        result.findings.push_back(of(Severity::low, std::to_string(count)));
        EXPECT_EQ(result.hero()->groupID(), "1");
        EXPECT_EQ(result.more().size(), std::min<std::size_t>(count - 1, 4));
    }
    EXPECT_EQ(result.more().back().groupID(), "5");
}

} // namespace
} // namespace pacelet
