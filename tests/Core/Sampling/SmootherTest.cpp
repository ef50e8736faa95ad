#include "Core/Sampling/Smoother.h"

#include "tests/Support/Processes.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

using testing::lone;

TEST(Smoother, AveragesOverAllTicksCountingAbsenceAsZero) {
    const std::vector<Smoother::CPUByID> history{{{"pid:1", 30.0}, {"pid:2", 10.0}},
                                                 {{"pid:2", 50.0}}};
    const auto smoothed =
        Smoother::average({lone(1, "/a", 99), lone(2, "/b", 50), lone(3, "/c", 40)}, history);
    ASSERT_EQ(smoothed.size(), 3U);
    EXPECT_EQ(smoothed[0].id, "pid:2");
    EXPECT_EQ(smoothed[0].cpuPercent, 30);
    EXPECT_EQ(smoothed[1].id, "pid:1");
    EXPECT_EQ(smoothed[1].cpuPercent, 15);
    EXPECT_EQ(smoothed[1].members.front().cpuPercent, 99) << "members keep the raw figures";
    EXPECT_EQ(smoothed[2].cpuPercent, 0);
}

TEST(Smoother, KeepsTheOrderOfTiesAndOfAnEmptyHistory) {
    const std::vector<ProcessGroup> latest{lone(1, "/z", 1), lone(2, "/a", 2)};
    EXPECT_EQ(Smoother::average(latest, {}), latest);
    const std::vector<Smoother::CPUByID> flat{{{"pid:1", 5.0}, {"pid:2", 5.0}}};
    EXPECT_EQ(Smoother::average(latest, flat)[0].id, "pid:1");
}

TEST(Smoother, AddsUpGroupsOfOneID) {
    const std::vector<ProcessGroup> twins{lone(1, "/a", 1), lone(1, "/a", 2)};
    EXPECT_EQ(Smoother::cpuByID(twins), (Smoother::CPUByID{{"pid:1", 3.0}}));
}

} // namespace
} // namespace pacelet
