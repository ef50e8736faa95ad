#include "Core/Usage/HistoryLines.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <rapidcheck.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

constexpr auto always = std::numeric_limits<std::int64_t>::min();

std::vector<MinuteRecord> decode(std::string text, std::int64_t earliest = always) {
    std::vector<MinuteRecord> records;
    HistoryLines::decode(text, earliest, records);
    return records;
}

const MinuteRecord example{29545920, 23.5, 61.25, 0, 0, 9126805504, 12};
const std::string exampleLine = R"({"t":29545920,"cpu":23.5,"cpuMax":61.25,"pressure":0,)"
                                R"("swap":0,"memUsed":9126805504,"n":12})";

TEST(HistoryLines, WritesOneCompactLine) {
    EXPECT_EQ(HistoryLines::encode(example), exampleLine + "\n");
}

TEST(HistoryLines, ReadsBackWhatItWrote) {
    const bool holds = rc::check(
        "decode undoes encode", [](std::vector<std::int64_t> integers, std::uint64_t bits) {
            integers.resize(5);
            const auto load = std::bit_cast<double>(bits);
            RC_PRE(std::isfinite(load));
            const MinuteRecord record{integers[0], load,        load / 3,   integers[1],
                                      integers[2], integers[3], integers[4]};
            const std::string line = HistoryLines::encode(record);
            RC_ASSERT(decode(line) == std::vector{record});
            RC_ASSERT(decode(line + line, record.t).size() == 2U);
            if (record.t < std::numeric_limits<std::int64_t>::max()) {
                RC_ASSERT(decode(line, record.t + 1).empty());
            }
        });
    EXPECT_TRUE(holds);
}

TEST(HistoryLines, TakesKeysInAnyOrderAndFormsThatJSONAllows) {
    for (
        const std::string line : {
            R"({"n":12,"memUsed":9126805504,"swap":0,"pressure":0,"cpuMax":61.25,"cpu":23.5,"t":29545920})",
            R"( { "t" : 29545920 , "cpu":2.35E1, "cpuMax":61.25,"pressure":-0,"swap":0,"memUsed":9126805504,"n":12 } )"
            "\r",
            R"({"new":{"t":[1]},"t":1,"t":29545920,"cpu":23.5,"cpuMax":61.25,"pressure":0,"swap":0,"memUsed":9126805504,"n":12})",
        }) {
        EXPECT_EQ(decode(line), std::vector{example}) << line;
    }
    const auto whole =
        decode(R"({"t":1,"cpu":7,"cpuMax":9,"pressure":0,"swap":0,"memUsed":0,"n":1})");
    ASSERT_EQ(whole.size(), 1U) << "a float may be written as a whole number";
    EXPECT_EQ(whole[0].cpuMax, 9);
}

/// The example with the first `what` replaced.
std::string with(std::string_view what, std::string_view replacement) {
    std::string line = exampleLine;
    return line.replace(line.find(what), what.size(), replacement);
}

TEST(HistoryLines, LosesABadLineAndNoOther) {
    const std::vector<std::string> bad{
        "",
        " ",
        "\r",
        "null",
        "[" + exampleLine + "]",
        "{}",
        exampleLine.substr(0, exampleLine.size() - 1), // half-written
        "{\"t\":29545920,\"cpu\":\"unclosed",
        exampleLine + exampleLine,
        exampleLine + ",",
        with("\"n\"", "\"m\""),                   // a key is missing
        with("29545920", "29545920.0"),           // no integer
        with("29545920", "\"29545920\""),         // a text
        with("29545920", "9223372036854775808"),  // too large
        with("29545920", "-9223372036854775809"), // too small
        with("29545920", "null"),
        with("23.5", "\"23.5\""),
        with("23.5", "1e400"),
        with("23.5", "NaN"),
        with("23.5", "23.5,\"x\":tru"), // wrong where nobody looks
        with("9126805504", "09126805504"),
        with("12", "true"),
        with("12", std::string(2000, '[')),
        std::string{"\0", 1} + exampleLine,
        std::string(2 << 20, ' ') + exampleLine, // beyond all reason
    };
    std::string text;
    std::vector<MinuteRecord> expected;
    for (const std::string& line : bad) {
        EXPECT_TRUE(decode(line).empty()) << line.substr(0, 200);
        text += line + "\n" + exampleLine + "\n";
        expected.push_back(example);
    }
    EXPECT_EQ(decode(text), expected);
    EXPECT_EQ(decode(exampleLine + "\n\n" + exampleLine), (std::vector{example, example}))
        << "a missing last line feed is no fault";
}

TEST(HistoryLines, TakesNothingFromAFileThatIsNotUTF8) {
    EXPECT_TRUE(decode(exampleLine + "\n\xC3\x28\n").empty());
    EXPECT_EQ(decode(exampleLine + "\n\xC3\xA4\n"), std::vector{example});
}

} // namespace
} // namespace pacelet
