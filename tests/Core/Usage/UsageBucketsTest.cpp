#include "Core/Usage/UsageBuckets.h"

#include <gmock/gmock.h>
#include <limits>
#include <random>

namespace pacelet {
namespace {

using ::testing::ElementsAre;

MinuteRecord record(std::int64_t t, double cpu, std::int64_t pressure = 0, std::int64_t swap = 0) {
    return {t, cpu, 100, pressure, swap, 5, 7};
}

UsageBucket bucket(std::int64_t startMinute, double cpu, double pressureShare, std::int64_t swap,
                   std::int64_t minutes) {
    return {fromUnixTime(static_cast<double>(startMinute) * 60), cpu, pressureShare, swap, minutes};
}

TEST(UsageBuckets, AveragesHoursAndDaysInAnyOrderOfRecords) {
    std::vector<MinuteRecord> records;
    for (std::int64_t minute = 0; minute < 120; ++minute) {
        records.push_back(record(14'400 + minute, minute < 60 ? 10 : 30));
    }
    std::mt19937 random{7};
    for (int round = 0; round < 3; ++round) {
        EXPECT_THAT(UsageBuckets::bucket(records, 60),
                    ElementsAre(bucket(14'400, 10, 0, 0, 60), bucket(14'460, 30, 0, 0, 60)));
        EXPECT_THAT(UsageBuckets::bucket(records, 1440),
                    ElementsAre(bucket(14'400, 20, 0, 0, 120)));
        std::shuffle(records.begin(), records.end(), random);
    }
    EXPECT_TRUE(UsageBuckets::bucket({}, 60).empty());
}

TEST(UsageBuckets, SharesPressureTakesTheHighestSwapAndLeavesGaps) {
    EXPECT_THAT(
        UsageBuckets::bucket({record(1439, 1, 0, -3), record(1440, 2, 1, 5), record(1441, 4, 2, 9),
                              record(4320, 8, 2, -1)},
                             1440),
        ElementsAre(bucket(0, 1, 0, -3, 1), bucket(1440, 3, 1, 9, 2), bucket(4320, 8, 1, -1, 1)));
    EXPECT_EQ(UsageBuckets::bucket(
                  {record(0, 0, 0), record(1, 0, 1), record(2, 0, 2), record(3, 0, 0)}, 60)[0]
                  .pressureShare,
              0.5);
    EXPECT_THAT(UsageBuckets::bucket({record(-61, 3), record(-59, 1), record(59, 2)}, 60),
                ElementsAre(bucket(-60, 3, 0, 0, 1), bucket(0, 1.5, 0, 0, 2)))
        << "division truncates";
}

TEST(UsageBucketsDeathTest, StopsAtASizeOrAStartOutOfRange) {
    EXPECT_DEATH(UsageBuckets::bucket({record(0, 0)}, 0), "bucket");
    EXPECT_DEATH(UsageBuckets::bucket({record(std::numeric_limits<std::int64_t>::max(), 0)}, 60),
                 "overflow");
}

} // namespace
} // namespace pacelet
