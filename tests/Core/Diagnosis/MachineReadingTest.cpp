#include "Core/Diagnosis/MachineReading.h"

#include "Core/Knowledge/CatalogFile.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/FakeToolRunner.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace pacelet {
namespace {

/// Tells of each program the path that it was asked for.
struct EchoingKnowledge : ProgramKnowledge {
    std::vector<std::shared_ptr<const ProgramFacts>>
    about(std::span<const ProgramQuestion> questions) override {
        std::vector<std::shared_ptr<const ProgramFacts>> answers;
        for (const ProgramQuestion& each : questions) {
            answers.push_back(std::make_shared<ProgramFacts>(ProgramFacts{.unit = each.path}));
        }
        return answers;
    }
};

class MachineReadings : public ::testing::Test {
protected:
    MachineReading read(const std::string& file, const std::optional<Snapshot>& previous = {},
                        Explaining explaining = Explaining::no) {
        std::ifstream stream{PACELET_FIXTURES "/ps/" + file};
        const std::string table{std::istreambuf_iterator<char>{stream}, {}};
        testing::FakeToolRunner tools;
        tools.answer = [&](const auto&) { return Shell::Output{0, table, ""}; };
        return readMachine(tools, kernel, clock, previous, catalog, explaining, &knowledge);
    }

    testing::FakeKernel kernel;
    testing::FakeClock clock;
    EchoingKnowledge knowledge;
    const ProcessCatalog catalog{CatalogFile::read(PACELET_RESOURCES "/processes.json")};
};

TEST_F(MachineReadings, MeasureAgainstTheSnapshotBeforeAndExplainWhenAsked) {
    const MachineReading first = read("mac-indexing.txt", {}, Explaining::yes);
    ASSERT_GT(first.groups.size(), 20U);
    EXPECT_EQ(first.explanations.size(), first.groups.size());
    EXPECT_EQ(first.explanations.at("/Applications/Safari.app").verdict, Verdict::safe);
    EXPECT_GT(first.signals.cpuLoadPercent, 15);
    EXPECT_EQ(first.memory.total, kernel.memory);
    for (const ProcessGroup& group : first.groups) {
        EXPECT_EQ(group.facts->unit, group.primary().path);
    }

    clock.wall += Seconds{3};
    const MachineReading second = read("mac-indexing-3s-later.txt", first.snapshot);
    EXPECT_TRUE(second.explanations.empty());
    EXPECT_EQ(second.groups.front().displayName, "Safari") << "Spotlight has calmed down";
    EXPECT_NEAR(second.groups.front().cpuPercent, 100, 0.5)
        << "1.5 s in the program and 1.5 s in its helper";
}

} // namespace
} // namespace pacelet
