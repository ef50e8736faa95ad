#include "PaceletApp/ProcessesView/TableGeometry.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

TEST(TableGeometry, findsTheRowsOfAView) {
    TableGeometry table{.count = 10, .rowHeight = 10};
    using Range = TableGeometry::Range;
    struct Case {
        std::optional<std::size_t> open;
        double y;
        double length;
        Range rows;
    };
    const Case cases[] = {
        {{}, 0, 30, {0, 4}},   {{}, 5, 20, {0, 3}},  {{}, 95, 30, {9, 10}}, {{}, -40, 20, {0, 1}},
        {2, 0, 20, {0, 3}},    {2, 25, 60, {2, 3}},  {2, 40, 5, {2, 3}},    {2, 130, 5, {3, 4}},
        {9, 150, 40, {9, 10}}, {0, 105, 10, {0, 2}},
    };
    for (const Case& each : cases) {
        table.open = each.open;
        table.panelHeight = 100;
        EXPECT_EQ(table.rowsBetween(each.y, each.length, 0), each.rows) << each.y;
    }
    EXPECT_EQ(table.rowsBetween(0, 10, 3), (Range{0, 4}));
    EXPECT_EQ((TableGeometry{.rowHeight = 10}.rowsBetween(0, 500, 3)), Range{});
    EXPECT_EQ(table.clamped(5000, 60), 140);
    EXPECT_EQ(table.clamped(50, 5000), 0);
}

} // namespace
} // namespace pacelet
