#include "Core/Support/Text.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <rapidcheck.h>
#include <string>
#include <utility>
#include <vector>

namespace pacelet {
namespace {

TEST(Text, ReadsIntegersStrictly) {
    const std::vector<std::pair<std::string, std::optional<std::int32_t>>> cases{
        {"0", 0},
        {"+7", 7},
        {"-7", -7},
        {"007", 7},
        {"2147483647", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"2147483648", {}},
        {"", {}},
        {"+", {}},
        {"-", {}},
        {"+-7", {}},
        {"--7", {}},
        {" 7", {}},
        {"7 ", {}},
        {"7.0", {}},
        {"0x7", {}},
        {"7a", {}},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(parseInteger<std::int32_t>(text), expected) << '"' << text << '"';
    }
    EXPECT_EQ(parseInteger<std::uint32_t>("4294967295"), 4294967295U);
    EXPECT_EQ(parseInteger<std::uint32_t>("+5"), 5U);
    EXPECT_EQ(parseInteger<std::uint32_t>("-0"), 0U);
    EXPECT_EQ(parseInteger<std::uint32_t>("-1"), std::nullopt);
    EXPECT_EQ(parseInteger<std::uint32_t>("4294967296"), std::nullopt);
}

TEST(Text, ReadsFloatsInTheCLocale) {
    const std::vector<std::pair<std::string, std::optional<double>>> cases{
        {"1.5", 1.5}, {"+1.5", 1.5}, {"-.5", -0.5}, {"5.", 5.0},   {"1e3", 1000.0}, {"1,5", {}},
        {"", {}},     {"+", {}},     {"+-1", {}},   {" 1", {}},    {"1 ", {}},      {"nan", {}},
        {"inf", {}},  {"1e999", {}}, {"0x10", {}},  {"1.2.3", {}},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(parseFloat(text), expected) << '"' << text << '"';
    }
}

TEST(Text, TakesPathsApart) {
    EXPECT_EQ(lastPathComponent("/a/b"), "b");
    EXPECT_EQ(lastPathComponent("/a/b//"), "b");
    EXPECT_EQ(lastPathComponent("b"), "b");
    EXPECT_EQ(lastPathComponent("//"), "/");
    EXPECT_EQ(lastPathComponent(""), "");
    EXPECT_EQ(withoutExtension("Foo.bar.app"), "Foo.bar");
    EXPECT_EQ(withoutExtension(".hidden"), ".hidden");
    EXPECT_EQ(withoutExtension("plain"), "plain");
    EXPECT_EQ(pathExtension("x.plist"), "plist");
    EXPECT_EQ(pathExtension("x."), "");
}

TEST(Text, SplitsAndTrims) {
    using Pieces = std::vector<std::string_view>;
    EXPECT_EQ(splitDroppingEmpty(",a,,b,", ','), (Pieces{"a", "b"}));
    EXPECT_EQ(splitKeepingEmpty("a,,b,", ','), (Pieces{"a", "", "b", ""}));
    EXPECT_EQ(splitKeepingEmpty("", ','), (Pieces{""}));
    EXPECT_EQ(trimmed(" \t\r\n a b \n"), "a b");
    EXPECT_EQ(trimmed("\n \n"), "");
    Pieces lines;
    forEachLine("\na\n\nb", [&](std::string_view line) { lines.push_back(line); });
    EXPECT_EQ(lines, (Pieces{"a", "b"}));
}

TEST(Text, RepairsBrokenUTF8) {
    const std::string mark = "\xEF\xBF\xBD";
    const std::vector<std::pair<std::string, std::string>> cases{
        {"plain", "plain"},
        {"gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F"},
        {"a\xFFz", "a" + mark + "z"},
        {"a\xC3", "a" + mark},
        {"\xE2\x82", mark},                              // one broken sequence, cut short
        {"\xE2\x28\xA1", mark + "(" + mark},             // a follower that is none
        {"\xC0\xAF", mark + mark},                       // an overlong form
        {"\xED\xA0\x80", mark + mark + mark},            // half a surrogate pair
        {"\xF4\x90\x80\x80", mark + mark + mark + mark}, // past the last code point
        {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
    };
    for (const auto& [broken, repaired] : cases) {
        EXPECT_EQ(repairedUTF8(broken), repaired);
    }
    EXPECT_TRUE(rc::check("repairing twice changes nothing more", [](const std::string& bytes) {
        const std::string once = repairedUTF8(bytes);
        RC_ASSERT(repairedUTF8(once) == once);
    }));
}

} // namespace
} // namespace pacelet
