#include "Core/Usage/MinuteAggregator.h"
#include "Core/Usage/UsageBuckets.h"

#include <gmock/gmock.h>
#include <limits>
#include <random>
#include <vector>

namespace pacelet {
namespace {

using ::testing::ElementsAre;

struct Sample {
    double at; ///< seconds since 1970
    double cpu;
    Pressure pressure = Pressure::normal;
    std::int64_t swap = 0;
    std::int64_t memory = 0;
};

std::vector<MinuteRecord> fold(MinuteAggregator& aggregator, const std::vector<Sample>& samples) {
    std::vector<MinuteRecord> records;
    for (const Sample& each : samples) {
        if (const auto record = aggregator.add(each.cpu, each.pressure, each.swap, each.memory,
                                               fromUnixTime(each.at))) {
            records.push_back(*record);
        }
    }
    return records;
}

TEST(MinuteAggregator, ClosesAMinuteWithTheFirstSampleOfAnother) {
    MinuteAggregator aggregator;
    EXPECT_TRUE(fold(aggregator, {{600, 10, Pressure::critical, 900, 50},
                                  {659.9, 30, Pressure::elevated, 300, 70}})
                    .empty());
    const auto records = fold(
        aggregator,
        {{660, 0.5, Pressure::normal, 1, 2}, {719, 0}, {720, 4, Pressure::elevated}, {780, 0}});
    EXPECT_THAT(records, ElementsAre(MinuteRecord{10, 20, 30, 2, 300, 70, 2},
                                     MinuteRecord{11, 0.25, 0.5, 0, 0, 0, 2},
                                     MinuteRecord{12, 4, 4, 1, 0, 0, 1}))
        << "worst pressure and peak start over, swap and memory are the last sample's";
}

TEST(MinuteAggregator, ClosesOnAnyChangeOfTheMinute) {
    MinuteAggregator aggregator;
    const auto records =
        fold(aggregator, {{60'000, 1}, {600'000, 2}, {59'999, 3}, {-59, 4}, {59, 5}, {60, 6}});
    ASSERT_EQ(records.size(), 4U) << "after sleep, after a clock set back, and never for a gap";
    EXPECT_EQ(records[0].t, 1000);
    EXPECT_EQ(records[1].t, 10'000);
    EXPECT_EQ(records[2].t, 999);
    EXPECT_EQ(records[3].t, 0) << "truncation joins the minutes around 1970";
    EXPECT_EQ(records[3].n, 2);
}

TEST(MinuteAggregator, TakesANegativeLoadNotAsAPeak) {
    MinuteAggregator aggregator;
    EXPECT_EQ(fold(aggregator, {{0, -5}, {60, 0}}).at(0), (MinuteRecord{0, -5, 0, 0, 0, 0, 1}));
}

TEST(MinuteAggregatorDeathTest, StopsAtAMomentBeyondMinutes) {
    MinuteAggregator aggregator;
    for (const double at : {std::numeric_limits<double>::quiet_NaN(), 1e300,
                            -std::numeric_limits<double>::infinity()}) {
        EXPECT_DEATH(aggregator.add(0, Pressure::normal, 0, 0, fromUnixTime(at)),
                     "time of a sample");
    }
}

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
    EXPECT_THAT(UsageBuckets::bucket({record(7, 5)}, 1), ElementsAre(bucket(7, 5, 0, 0, 1)));
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
                 "time of a bucket");
}

} // namespace
} // namespace pacelet
