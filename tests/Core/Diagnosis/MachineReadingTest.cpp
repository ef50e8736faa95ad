#include "Core/Diagnosis/MachineReading.h"

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Knowledge/CatalogFile.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/FakeToolRunner.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace pacelet {
namespace {

class MachineReadings : public ::testing::Test {
protected:
    MachineReading read(const std::string& file, const std::optional<Snapshot>& previous = {},
                        Explaining explaining = Explaining::no) {
        std::ifstream stream{PACELET_FIXTURES "/ps/" + file};
        const std::string table{std::istreambuf_iterator<char>{stream}, {}};
        testing::FakeToolRunner tools;
        tools.answer = [&](const auto&) { return Shell::Output{0, table, ""}; };
        return readMachine(tools, kernel, clock, previous, catalog, explaining);
    }

    testing::FakeKernel kernel;
    testing::FakeClock clock;
    const ProcessCatalog catalog{CatalogFile::read(PACELET_RESOURCES "/processes.json")};
};

TEST_F(MachineReadings, FoldABusyMacIntoOneAnswer) {
    const MachineReading reading = read("mac-indexing.txt", {}, Explaining::yes);
    ASSERT_GT(reading.groups.size(), 20U);
    EXPECT_EQ(reading.explanations.size(), reading.groups.size());
    EXPECT_EQ(reading.explanations.at("/Applications/Safari.app").verdict, Verdict::safe);
    EXPECT_GT(reading.signals.cpuLoadPercent, 15);
    EXPECT_EQ(reading.memory.total, kernel.memory);

    DiagnosisInput input;
    input.signals = reading.signals;
    input.groups = reading.groups;
    const DiagnosisResult result = Diagnosis::run(input, catalog);
    ASSERT_EQ(result.findings.size(), 1U) << "Spotlight's processes are no hogs of their own";
    EXPECT_EQ(result.hero()->kind(), FindingKind::spotlight);
    EXPECT_EQ(result.hero()->detail(),
              "mdworker_shared is using 120% CPU while it updates the search index. That's normal "
              "after an update or a large file change.");
}

TEST_F(MachineReadings, MeasureAgainstTheSnapshotBefore) {
    const MachineReading first = read("mac-indexing.txt");
    clock.wall += Seconds{3};
    const MachineReading second = read("mac-indexing-3s-later.txt", first.snapshot);
    EXPECT_TRUE(second.explanations.empty());
    const auto safari = std::ranges::find(second.groups, "Safari", &ProcessGroup::displayName);
    ASSERT_NE(safari, second.groups.end());
    EXPECT_NEAR(safari->cpuPercent, 100, 0.5) << "1.5 s in the program and 1.5 s in its helper";
    EXPECT_EQ(second.groups.front().displayName, "Safari") << "Spotlight has calmed down";
}

} // namespace
} // namespace pacelet
