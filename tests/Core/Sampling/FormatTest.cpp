#include "Core/Sampling/Format.h"
#include "Core/Support/Text.h"
#include "tests/Support/Table.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <string>

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

TEST(Format, BytesStayCloseToTheCount) {
    EXPECT_TRUE(rc::check("within half a last digit, and never reaching the next unit", [] {
        const int shift = *rc::gen::inRange(0, 53);
        const std::int64_t count = *rc::gen::inRange<std::int64_t>(0, 1024) << shift;
        const std::string text = Format::bytes(count);
        const double figure = std::stod(text);
        const std::string unit = text.substr(text.find(' ') + 1);
        const double size = unit == "KB"   ? 0x1p10
                            : unit == "MB" ? 0x1p20
                            : unit == "GB" ? 0x1p30
                                           : 0x1p40;
        const double digit = unit == "KB" ? 1 : unit == "MB" ? 0.1 : 0.01;
        RC_ASSERT(std::abs(figure - static_cast<double>(count) / size) <= digit / 2 + 1e-9);
        RC_ASSERT(unit == "TB" || figure < 1024);
    }));
}

} // namespace
} // namespace pacelet
