#include "Core/Internet/SpeedTest.h"

#include "Core/Internet/Responsiveness.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/FakeToolRunner.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace pacelet {
namespace {

constexpr TimePoint noon = fromUnixTime(1'754'049'600.25);

/// The figures of a summary, or "unreadable".
std::string parsed(std::string_view json) {
    try {
        const SpeedResult result = SpeedTest::parse(json, noon);
        EXPECT_EQ(result.measuredAt, noon);
        return fmt::format("{} {} {} {}", result.downloadMbps, result.uploadMbps,
                           testing::shown(result.responsivenessRPM),
                           testing::shown(result.baseRTTms));
    } catch (const SpeedTestError& error) {
        EXPECT_EQ(error, SpeedTestError::unreadable());
        return "unreadable";
    }
}

TEST(SpeedTest, ReadsTheSummary) {
    const std::string mark = "(speeds)";
    for (auto [json, figures] : testing::rows<2>("Internet", "summaries of a speed test")) {
        if (const std::size_t at = json.find(mark); at != std::string::npos) {
            json.replace(at, mark.size(), R"("dl_throughput": 100000000, "ul_throughput": 2e7)");
        }
        EXPECT_EQ(parsed(json), figures) << json;
    }
}

TEST(SpeedTest, RunsTheToolOnce) {
    testing::FakeClock clock;
    testing::FakeToolRunner tools;
    tools.answer = [&](const auto&) {
        clock.wall = noon; // it is noon when the tool ends
        return Shell::Output{0, R"({"dl_throughput": 1e6, "ul_throughput": 0})", "noise"};
    };
    EXPECT_EQ(SpeedTest::run(tools, clock), (SpeedResult{.downloadMbps = 1, .measuredAt = noon}));
    EXPECT_EQ(tools.calls, (std::vector<testing::FakeToolRunner::Call>{
                               {"/usr/bin/networkQuality", {"-c", "-M", "25"}}}));

    tools.answer = [](const auto&) {
        return Shell::Output{2, R"({"dl_throughput": 1, "ul_throughput": 1})",
                             "\n  No connection. \r\n"};
    };
    try {
        SpeedTest::run(tools, clock);
        ADD_FAILURE() << "a failed run gave a result";
    } catch (const SpeedTestError& error) {
        EXPECT_EQ(error, SpeedTestError::failed("No connection."));
        EXPECT_NE(error, SpeedTestError::unreadable());
        EXPECT_STREQ(error.what(), "the speed test failed: No connection.");
    }
    tools.failToLaunch();
    EXPECT_THROW(SpeedTest::run(tools, clock), LaunchError);
}

TEST(SpeedResult, PersistsWithoutItsAbsentFields) {
    EXPECT_EQ(megabits(93.5) + ", " + megabits(-0.4), "94 Mbps, 0 Mbps");
    SpeedResult result{93.5, 0, std::nullopt, std::nullopt, fromUnixTime(978307200.5)};
    EXPECT_EQ(result.toJson(), R"({"downloadMbps":93.5,"uploadMbps":0,"measuredAt":0.5})");
    result.responsivenessRPM = -3;
    result.baseRTTms = 1e-7;
    EXPECT_EQ(result.toJson(), R"({"downloadMbps":93.5,"uploadMbps":0,"responsivenessRPM":-3,)"
                               R"("baseRTTms":1e-07,"measuredAt":0.5})");
}

TEST(SpeedResult, ReadsBackWhatItWrote) {
    const auto speed = rc::gen::map(rc::gen::arbitrary<std::int64_t>(), [](std::int64_t bits) {
        return static_cast<double>(bits) / 1e6;
    });
    EXPECT_TRUE(rc::check([&] {
        SpeedResult result;
        result.downloadMbps = *speed;
        result.uploadMbps = *speed;
        if (*rc::gen::arbitrary<bool>()) {
            result.responsivenessRPM = *rc::gen::inRange<std::int64_t>(-1000000, 1LL << 53);
        }
        if (*rc::gen::arbitrary<bool>()) {
            result.baseRTTms = *speed;
        }
        const auto now =
            static_cast<double>(*rc::gen::inRange<std::int64_t>(978307200, 5'000'000'000));
        result.measuredAt = fromUnixTime(now + *rc::gen::inRange(0, 999) / 1000.0);
        RC_ASSERT(SpeedResult::fromJson(result.toJson()) == result);
    }));
    // Figures that in plain digits would be integers beyond 64 bits.
    for (const double figure : {4.444444444444445e20, -9223372036854775808.0, 1.7e308, 1e-300}) {
        const SpeedResult extreme{
            .downloadMbps = figure, .responsivenessRPM = INT64_MIN, .baseRTTms = figure};
        EXPECT_EQ(SpeedResult::fromJson(extreme.toJson()), extreme) << figure;
    }
}

TEST(SpeedResult, RefusesWhatIsNoStoredResult) {
    for (const auto& [json, answer] :
         testing::rows<2>("Internet", "stored results of a speed test")) {
        EXPECT_EQ(SpeedResult::fromJson(json).has_value(), answer == "reads") << json;
    }
}

TEST(Responsiveness, GradesWithInclusiveBounds) {
    using enum Responsiveness;
    const std::vector<std::pair<std::int64_t, Responsiveness>> rows{
        {INT64_MAX, high}, {1000, high}, {999, medium}, {300, medium}, {299, low}, {0, low}};
    for (const auto& [rpm, grade] : rows) {
        EXPECT_EQ(responsiveness(rpm), grade) << rpm;
    }
    EXPECT_EQ(rawValue(medium), "medium");
    EXPECT_EQ(label(medium), "Medium");
}

} // namespace
} // namespace pacelet
