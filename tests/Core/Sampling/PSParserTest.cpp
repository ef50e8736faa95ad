#include "Core/Sampling/PSParser.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

TEST(PSParser, ReadsColumnsAndKeepsBlanksInPaths) {
    const auto samples = PSParser::parse(
        "    1     0     0 root       9:01.72   12345   0.3 /sbin/launchd\n"
        "  812     1   501 ann     1:02:03.50  2048  150.5 /Applications/Two Words.app/Contents/"
        "MacOS/Two  Words \n"
        "+3 -4 5 u 0:00.00 -1 -2.5  bare");
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_EQ(samples[0],
              (ProcessSample{1, 0, 0, "root", 541.72, 12345 * 1024, 0.3, "/sbin/launchd"}));
    EXPECT_EQ(samples[1].path, "/Applications/Two Words.app/Contents/MacOS/Two  Words ");
    EXPECT_EQ(samples[1].name(), "Two  Words ");
    EXPECT_EQ(samples[1].cpuTime, 3723.5);
    EXPECT_EQ(samples[2], (ProcessSample{3, -4, 5, "u", 0, -1024, -2.5, " bare"}))
        << "only the one blank behind the seventh column divides";
}

TEST(PSParser, NamesProcessesByWhatFollowsTheLastSlash) {
    EXPECT_EQ(executableName("/usr/bin/top"), "top");
    EXPECT_EQ(executableName("top"), "top");
    EXPECT_EQ(executableName("/usr/bin/"), "");
    EXPECT_EQ(executableName(""), "");
}

TEST(PSParser, SkipsBadLinesAndKeepsTheirNeighbours) {
    const std::string good = "7 1 501 ann 0:01.00 10 0.0 /bin/good";
    const std::vector<std::string> bad{
        "",
        "   ",
        "x 1 501 ann 0:01.00 10 0.0 /bin/a",
        "2147483648 1 501 ann 0:01.00 10 0.0 /bin/a",
        "7 1 -501 ann 0:01.00 10 0.0 /bin/a",
        "7 1 4294967296 ann 0:01.00 10 0.0 /bin/a",
        "7 1 501 two words 0:01.00 10 0.0 /bin/a",
        "7 1 501 ann 1.00 10 0.0 /bin/a",
        "7 1 501 ann 0:01,00 10 0.0 /bin/a",
        "7 1 501 ann 0:01.00 10 0,0 /bin/a",
        "7 1 501 ann 0:01.00 ten 0.0 /bin/a",
        "7 1 501 ann 0:01.00 9223372036854775808 0.0 /bin/a",
        "7 1 501 ann 0:01.00 10 nan /bin/a",
        "7 1 501 ann 0:01.00 10 0.0",
        "7 1 501 ann 0:01.00 10 0.0 ",
        "7\t1 501 ann 0:01.00 10 0.0 /bin/a",
    };
    for (const std::string& line : bad) {
        const auto samples = PSParser::parse(good + "\n" + line + "\n" + good + "\n");
        EXPECT_EQ(samples.size(), 2U) << line;
    }
    EXPECT_TRUE(PSParser::parse("").empty());
    EXPECT_TRUE(PSParser::parse("\n\n").empty());
}

TEST(PSParserDeathTest, StopsOnAResidentSizeBeyond64Bits) {
    EXPECT_DEATH(PSParser::parse("7 1 501 ann 0:01.00 9223372036854775807 0.0 /bin/a"),
                 "a resident size exceeds 64 bits");
}

TEST(PSParser, FoldsCPUTimes) {
    const std::vector<std::pair<std::string, std::optional<double>>> cases{
        {"1:23.45", 83.45}, {"1:02:03", 3723.0}, {"0:00.00", 0.0},
        {"1::30", 90.0},    {":1:30:", 90.0},    {"90", {}},
        {"1:2:3:4", {}},    {"a:30", {}},        {"2-01:00:00", {}},
        {"", {}},           {":", {}},           {"1: 30", {}},
    };
    for (const auto& [text, expected] : cases) {
        const auto seconds = PSParser::cpuSeconds(text);
        ASSERT_EQ(seconds.has_value(), expected.has_value()) << text;
        if (expected) {
            EXPECT_DOUBLE_EQ(*seconds, *expected) << text;
        }
    }
}

/// Ordinary lines are read in one pass; a sign sends a line the general way. Both must agree.
TEST(PSParser, ReadsOrdinaryLinesLikeAllOthers) {
    EXPECT_TRUE(rc::check("with and without a sign", [] {
        const auto digits = [](int most) {
            return *rc::gen::resize(most, rc::gen::nonEmpty(rc::gen::container<std::string>(
                                              rc::gen::inRange('0', char('9' + 1)))));
        };
        const std::string rest = " 1 " + digits(12) + " ann " + digits(4) + ":" + digits(3) + "." +
                                 digits(4) + "  " + digits(14) + " " + digits(5) + "." + digits(3) +
                                 " /a b/c";
        const std::string pid = digits(12);
        RC_ASSERT(PSParser::parse(pid + rest) == PSParser::parse("+" + pid + rest));
    }));
}

TEST(PSParser, SurvivesAnyText) {
    EXPECT_TRUE(rc::check("any bytes", [] {
        const auto junk = *rc::gen::container<std::string>(
            rc::gen::elementOf(std::string{"0123456789 .:-+\nab\xFF/"}));
        for (const ProcessSample& sample : PSParser::parse(junk)) {
            RC_ASSERT(!sample.path.empty());
        }
    }));
}

} // namespace
} // namespace pacelet
