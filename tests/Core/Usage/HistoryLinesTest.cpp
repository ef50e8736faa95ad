#include "Core/Usage/HistoryLines.h"
#include "tests/Support/Table.h"

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
    EXPECT_EQ(HistoryLines::encode(example), exampleLine + "\n");
}

TEST(HistoryLines, TakesKeysInAnyOrderAndFormsThatJSONAllows) {
    for (const auto& [line] :
         testing::rows<1>("Usage", "other ways to write the same history line")) {
        EXPECT_EQ(decode(line), std::vector{example}) << line;
    }
    const auto whole =
        decode(R"({"t":1,"cpu":7,"cpuMax":9,"pressure":0,"swap":0,"memUsed":0,"n":1})");
    ASSERT_EQ(whole.size(), 1U) << "a float may be written as a whole number";
    EXPECT_EQ(whole[0].cpuMax, 9);
}

TEST(HistoryLines, LosesABadLineAndNoOther) {
    std::vector<std::string> bad{"", exampleLine + exampleLine,
                                 std::string(2 << 20, ' ') + exampleLine}; // beyond all reason
    for (const auto& [line] : testing::rows<1>("Usage", "history lines that are none")) {
        bad.push_back(line);
    }
    const auto with = [](std::string_view what, std::string_view instead) {
        return std::string{exampleLine}.replace(exampleLine.find(what), what.size(), instead);
    };
    bad.push_back(with("12", std::string(2000, '[')));
    for (const auto& [what, instead] : testing::rows<2>("Usage", "faults in a history line")) {
        bad.push_back(with(what, instead));
    }
    std::string text;
    for (const std::string& line : bad) {
        EXPECT_TRUE(decode(line).empty()) << line.substr(0, 200);
        text += line + "\n" + exampleLine + "\n";
    }
    EXPECT_EQ(decode(text), std::vector(bad.size(), example));
    EXPECT_EQ(decode(exampleLine + "\n\n" + exampleLine), (std::vector{example, example}))
        << "a missing last line feed is no fault";
}

TEST(HistoryLines, TakesNothingFromAFileThatIsNotUTF8) {
    EXPECT_TRUE(decode(exampleLine + "\n\xC3\x28\n").empty());
    EXPECT_EQ(decode(exampleLine + "\n\xC3\xA4\n"), std::vector{example});
}

} // namespace
} // namespace pacelet
