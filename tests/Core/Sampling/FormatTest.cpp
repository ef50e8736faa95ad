#include "Core/Sampling/Format.h"
#include "Core/Support/Text.h"
#include "tests/Support/Table.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>

namespace pacelet {
namespace {

TEST(Format, FiguresAndUnits) {
    for (const auto& [count, text] : testing::rows<2>("Sampling", "sizes")) {
        EXPECT_EQ(Format::bytes(parseInteger<std::int64_t>(count).value()), text) << count;
    }
    for (const auto& [count, text] : testing::rows<2>("Sampling", "storage")) {
        EXPECT_EQ(Format::storage(parseInteger<std::int64_t>(count).value()), text) << count;
    }
    for (const auto& [figure, text] : testing::rows<2>("Sampling", "percents")) {
        EXPECT_EQ(Format::percent(parseFloat(figure).value()), text) << figure;
    }
    EXPECT_DEATH(Format::percent(std::nan("")), "out of range");
    EXPECT_DEATH(Format::percent(1e19), "out of range");
}

} // namespace
} // namespace pacelet
