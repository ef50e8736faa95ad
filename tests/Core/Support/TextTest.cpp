#include "Core/Support/Text.h"
#include "Core/Support/JsonDocument.h"
#include "Core/Support/JsonWriter.h"
#include "tests/Support/Table.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

TEST(Text, ReadsNumbersStrictlyInTheCLocale) {
    using testing::rows;
    using testing::shown;
    for (const auto& [text, number] : rows<2>("Support", "integers of 32 bits")) {
        EXPECT_EQ(shown(parseInteger<std::int32_t>(text)), number) << '"' << text << '"';
    }
    for (const auto& [text, number] : rows<2>("Support", "natural numbers of 32 bits")) {
        EXPECT_EQ(shown(parseInteger<std::uint32_t>(text)), number) << '"' << text << '"';
    }
    for (const auto& [text, number] : rows<2>("Support", "floats")) {
        EXPECT_EQ(shown(parseFloat(text)), number) << '"' << text << '"';
    }
    EXPECT_EQ(parseFloat(std::string_view{"1.55", 3}), 1.5);
    EXPECT_EQ(asciiLowercased("AZ[@"), "az[@");
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

TEST(Text, DecodesFiles) {
    for (const auto& [bytes, text] : testing::rows<2>("Support", "decoded files")) {
        EXPECT_EQ(decodedText(bytes), text);
    }
}

TEST(Text, MakesTextsPlainAndNumbersFit) {
    for (const auto& [text, plain] : testing::rows<2>("Support", "texts for a terminal")) {
        EXPECT_EQ(plainText(text), plain);
    }
    EXPECT_EQ(plainText(std::string_view{"\xC2\x80", 1}), "\xC2");
    for (const auto& [json, fitting] : testing::rows<2>("Support", "numbers that fit a parser")) {
        EXPECT_EQ(fittedNumbers(json), fitting);
    }
}

TEST(Text, RepairsBrokenUTF8) {
    for (const auto& [broken, repaired] : testing::rows<2>("Support", "repaired UTF-8")) {
        EXPECT_EQ(repairedUTF8(broken), repaired);
    }
    EXPECT_TRUE(rc::check("repairing twice changes nothing more", [](const std::string& bytes) {
        const std::string once = repairedUTF8(bytes);
        RC_ASSERT(repairedUTF8(once) == once);
    }));
}

TEST(JsonWriter, PutsCommasAndEscapes) {
    JsonWriter writer;
    writer.beginObject().key("a").value(std::int64_t{-1}).key("b").beginArray();
    writer.value(true).value("x \"\\\n\t\x1F").beginObject().endObject().endArray();
    writer.key("c").value(0.1).endObject();
    EXPECT_EQ(writer.take(), R"({"a":-1,"b":[true,"x \"\\\n\t\u001f",{}],"c":0.1})");
    EXPECT_EQ(writer.value("again").take(), R"("again")");
}

TEST(JsonWriter, WritesFloatsThatReadBack) {
    EXPECT_EQ(shortestFloat(-0.0), "0");
    EXPECT_EQ(shortestFloat(23.5), "23.5");
    EXPECT_EQ(shortestFloat(9223372036854775808.0), "9.223372036854776e+18");
    EXPECT_DEATH(shortestFloat(INFINITY), "finite");
    EXPECT_TRUE(rc::check("floats survive", [](double value) {
        RC_PRE(std::isfinite(value));
        RC_ASSERT(parseFloat(shortestFloat(value)) == value);
    }));
}

} // namespace
} // namespace pacelet
