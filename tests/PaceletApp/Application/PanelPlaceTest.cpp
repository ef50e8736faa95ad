#include "PaceletApp/Application/PanelPlace.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace pacelet {
namespace {

TEST(PanelPlace, opensBesideItsIconOrAtThePointer) {
    const QSize size{300, 400};
    const QRect screen{0, 30, 1920, 1050};
    const struct {
        QRect icon;
        QPoint pointer;
        QPoint place;
    } rows[] = {
        // A bar at the top, one at the bottom, and an icon in the corner.
        {{1000, 4, 22, 22}, {}, {860, 32}},
        {{1000, 1084, 22, 22}, {}, {860, 678}},
        {{1890, 4, 22, 22}, {}, {1620, 32}},
        // A tray that keeps its place to itself.
        {{}, {1900, 1070}, {1600, 664}},
        {{}, {100, 40}, {100, 47}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(panelPlace(row.icon, row.pointer, size, screen), row.place);
    }
}

RC_GTEST_PROP(PanelPlace, isWhollyOnTheScreenWhereItFits, ()) {
    const auto coordinate = rc::gen::inRange(-5000, 5000);
    const auto length = rc::gen::inRange(1, 4000);
    const QRect screen{*coordinate, *coordinate, *length, *length};
    const QSize size{*length, *length};
    const QRect icon =
        *rc::gen::arbitrary<bool>() ? QRect{} : QRect{*coordinate, *coordinate, 22, 22};
    const QRect panel{panelPlace(icon, {*coordinate, *coordinate}, size, screen), size};
    if (size.width() <= screen.width() && size.height() <= screen.height()) {
        RC_ASSERT(screen.contains(panel));
    } else {
        RC_ASSERT(panel.left() >= screen.left() && panel.top() >= screen.top());
    }
}

} // namespace
} // namespace pacelet
