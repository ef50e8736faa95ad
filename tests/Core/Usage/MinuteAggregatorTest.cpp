#include "Core/Usage/MinuteAggregator.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace pacelet {
namespace {

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
    const auto records = fold(aggregator, {{660, 4, Pressure::normal, 1, 2}, {719, 2}, {720, 0}});
    EXPECT_EQ(records,
              (std::vector<MinuteRecord>{{10, 20, 30, 2, 300, 70, 2}, {11, 3, 4, 0, 0, 0, 2}}))
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
        EXPECT_DEATH(aggregator.add(0, Pressure::normal, 0, 0, fromUnixTime(at)), "fit");
    }
}

} // namespace
} // namespace pacelet
