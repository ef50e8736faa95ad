#include "Core/Internet/SpeedTest.h"

#include "Core/Internet/Responsiveness.h"
#include "tests/Support/FakeKernel.h"
#include "tests/Support/FakeToolRunner.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace pacelet {
namespace {

constexpr TimePoint noon = fromUnixTime(1'754'049'600.25);

/// The result of a parse; nothing when it was unreadable.
std::optional<SpeedResult> parsed(std::string_view json) {
    try {
        return SpeedTest::parse(json, noon);
    } catch (const SpeedTestError& error) {
        EXPECT_EQ(error, SpeedTestError::unreadable());
        return std::nullopt;
    }
}

TEST(SpeedTest, ReadsTheSummary) {
    using Optional = std::optional<SpeedResult>;
    const std::string speeds = R"("dl_throughput": 100000000, "ul_throughput": 2e7)";
    const auto with = [&](std::string_view more) { return "{" + speeds + std::string{more} + "}"; };
    const SpeedResult bare{100, 20, std::nullopt, std::nullopt, noon};
    SpeedResult full = bare;
    full.responsivenessRPM = 1500;
    full.baseRTTms = 12.5;
    SpeedResult halved = full;
    halved.baseRTTms = std::nullopt;
    const std::vector<std::pair<std::string, Optional>> rows{
        {with(""), bare},
        {with(R"(, "responsiveness": 1500.9, "base_rtt": 12.5, "interface_name": "en0")"), full},
        {with(R"(, "responsiveness": 1500, "base_rtt": "12.5")"), halved},
        {with(R"(, "responsiveness": "1500", "base_rtt": null)"), bare},
        {with(R"(, "responsiveness": true, "base_rtt": false)"), bare},
        {with(R"(, "responsiveness": 1e300)"), bare},
        {with(R"(, "responsiveness": 9223372036854775808)"), bare},
        {R"({"dl_throughput": 0, "ul_throughput": 0})", SpeedResult{.measuredAt = noon}},
        {R"({"dl_throughput": "1", "ul_throughput": 2})", std::nullopt},
        {R"({"dl_throughput": 1, "ul_throughput": true})", std::nullopt},
        {R"({"dl_throughput": 1})", std::nullopt},
        {R"({"ul_throughput": 1})", std::nullopt},
        {R"({"dl_throughput": 1e999, "ul_throughput": 2})", std::nullopt},
        {"[" + with("") + "]", std::nullopt},
        {with("") + "}", std::nullopt},
        {with(","), std::nullopt},
        {with(", \"x\": \"\xff\""), std::nullopt},
        {"{\"dl_throughput\": 1, ", std::nullopt},
        {"12", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [json, result] : rows) {
        EXPECT_EQ(parsed(json), result) << json;
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
    }
    tools.failToLaunch();
    EXPECT_THROW(SpeedTest::run(tools, clock), LaunchError);
}

TEST(SpeedResult, PersistsWithoutItsAbsentFields) {
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
    const std::string rest = R"("uploadMbps":2,"measuredAt":3)";
    const std::vector<std::pair<std::string, bool>> rows{
        {R"({"downloadMbps":1,)" + rest + "}", true},
        {R"({"downloadMbps":1,"responsivenessRPM":null,"baseRTTms":null,)" + rest + "}", true},
        {R"({"downloadMbps":1,"responsivenessRPM":300.0,)" + rest + "}", true},
        {R"({"downloadMbps":1,"responsivenessRPM":300.5,)" + rest + "}", false},
        {R"({"downloadMbps":1,"responsivenessRPM":1e30,)" + rest + "}", false},
        {R"({"downloadMbps":1,"responsivenessRPM":"300",)" + rest + "}", false},
        {R"({"downloadMbps":1,"baseRTTms":true,)" + rest + "}", false},
        {R"({"downloadMbps":"1",)" + rest + "}", false},
        {"{" + rest + "}", false},
        {R"({"downloadMbps":1,"uploadMbps":2})", false},
        {R"([{"downloadMbps":1,)" + rest + "}]", false},
        {R"({"downloadMbps":1,)", false},
        {"", false},
    };
    for (const auto& [json, reads] : rows) {
        EXPECT_EQ(SpeedResult::fromJson(json).has_value(), reads) << json;
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
