#include "Core/Internet/NetTop.h"

#include "Core/Internet/TrafficByApp.h"
#include "tests/Support/FakeToolRunner.h"
#include "tests/Support/Table.h"

#include <cmath>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <set>

namespace pacelet {
namespace {

using Usages = std::vector<NetUsage>;

TEST(NetTop, ReadsTheLastSampleBusiestFirst) {
    const std::string text = ",bytes_in,bytes_out,\n"
                             "launchd.1,900,900,\n"
                             "only before.7,1,1,\n"
                             "\n"
                             ",bytes_in,bytes_out,\n"
                             "launchd.1,0,0,\n"
                             "small.10,5,0,\n"
                             "Google Chrome H.441,20,30,\n"
                             "com.apple.WebKit.Networking.12,50,0,\n"
                             ".13,0,50\n"
                             "last.14,1.5,1e1";
    EXPECT_EQ(NetTop::parse(text), (Usages{{441, "Google Chrome H", 20, 30},
                                           {12, "com.apple.WebKit.Networking", 50, 0},
                                           {13, "", 0, 50},
                                           {14, "last", 1.5, 10},
                                           {10, "small", 5, 0}}));
}

TEST(NetTop, SkipsOnlyTheLinesThatDoNotRead) {
    const auto told = [](const NetUsage& usage) {
        return fmt::format("{} {} {} {}", usage.pid, usage.name, usage.bytesInPerSec,
                           usage.bytesOutPerSec);
    };
    const std::string good = "7 good 1 0";
    for (const auto& [line, usage] : testing::rows<2>("Internet", "lines of nettop")) {
        for (const std::string header : {"", ",bytes_in,bytes_out,\n", ",bytes_in\r\n"}) {
            std::multiset<std::string> expected{good};
            if (usage != "none") {
                expected.insert(usage);
            }
            std::multiset<std::string> found;
            for (const NetUsage& each : NetTop::parse(header + line + "\n\ngood.7,1,0,")) {
                found.insert(told(each));
            }
            EXPECT_EQ(found, expected) << header << line;
        }
    }
    EXPECT_TRUE(NetTop::parse("a.1,5,5\n,bytes_in").empty()) << "nothing behind the last header";
}

TEST(NetTop, AnyTextGivesSortedRatesThatCanBeShown) {
    const auto piece = rc::gen::weightedOneOf<std::string>(
        {{4, rc::gen::elementOf(std::vector<std::string>{",bytes_in,bytes_out,\n", "\n", ",", ".",
                                                         "a.b.", "-", "1e300", "inf", "\r"})},
         {4, rc::gen::map(rc::gen::arbitrary<std::int64_t>(),
                          [](std::int64_t number) { return std::to_string(number); })},
         {3, rc::gen::map(rc::gen::inRange(0, 99),
                          [](int number) { return fmt::format("p.{},{},1,\n", number, number); })},
         {1, rc::gen::arbitrary<std::string>()}});
    EXPECT_TRUE(rc::check([&] {
        std::string text;
        for (const std::string& part : *rc::gen::container<std::vector<std::string>>(piece)) {
            text += part;
        }
        const Usages usage = NetTop::parse(text);
        for (std::size_t row = 0; row < usage.size(); ++row) {
            RC_ASSERT(usage[row].total() > 0);
            RC_ASSERT(std::abs(usage[row].bytesInPerSec) <= NetTop::mostBytesPerSecond);
            RC_ASSERT((row == 0 || usage[row - 1].total() >= usage[row].total()));
        }
    }));
}

TEST(NetTop, RunsTheToolAndTakesWhateverItPrinted) {
    testing::FakeToolRunner tools;
    tools.answer = [](const auto&) { return Shell::Output{1, "a.1,2,3\n", "killed"}; };
    EXPECT_EQ(NetTop::sample(tools), (Usages{{1, "a", 2, 3}}));
    EXPECT_EQ(tools.calls,
              (std::vector<testing::FakeToolRunner::Call>{
                  {"/usr/bin/nettop",
                   {"-P", "-d", "-L", "2", "-s", "1", "-x", "-J", "bytes_in,bytes_out"}}}));
    tools.failToLaunch();
    EXPECT_THROW(NetTop::sample(tools), LaunchError);
}

TEST(TrafficByApp, FoldsHelpersInFirstMetOrder) {
    const Usages usage{{30, "Helper (Renderer)", 5, 0},
                       {40, "curl", 1, 1},
                       {31, "GPU", 0, 4},
                       {50, "nc", 0, 2},
                       {41, "curl", 3, 0},
                       {60, "late", 9, 0}};
    const AppName appName = [](std::int32_t pid) -> std::optional<std::string> {
        return pid == 30 || pid == 31 ? std::optional<std::string>{"Browser"} : std::nullopt;
    };
    EXPECT_EQ(
        trafficByApp(usage, appName),
        (Usages{{30, "Browser", 5, 4}, {60, "late", 9, 0}, {40, "curl", 4, 1}, {50, "nc", 0, 2}}));
}

} // namespace
} // namespace pacelet
