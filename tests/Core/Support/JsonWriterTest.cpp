#include "Core/Support/JsonWriter.h"

#include "Core/Support/Text.h"

#include <cmath>
#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace pacelet {
namespace {

TEST(JsonWriter, PutsCommasAndEscapes) {
    JsonWriter writer;
    writer.beginObject().key("a").value(std::int64_t{-1}).key("b").beginArray();
    writer.value(true).value("x\"\\\n\t\x01").beginObject().endObject().endArray();
    writer.key("c").value(0.1).endObject();
    EXPECT_EQ(writer.take(), R"({"a":-1,"b":[true,"x\"\\\n\t\u0001",{}],"c":0.1})");
    EXPECT_EQ(writer.value("again").take(), R"("again")");
}

TEST(JsonWriter, WritesFloatsThatReadBack) {
    EXPECT_EQ(shortestFloat(-0.0), "0");
    EXPECT_EQ(shortestFloat(23.5), "23.5");
    EXPECT_TRUE(rc::check("floats survive", [](double value) {
        RC_PRE(std::isfinite(value));
        RC_ASSERT(parseFloat(shortestFloat(value)) == value);
    }));
}

} // namespace
} // namespace pacelet
