#include "PaceletApp/UsageView/BarPlot.h"
#include "PaceletApp/UsageView/LoadPlot.h"
#include "tests/PaceletApp/Support/Stage.h"
#include "tests/PaceletApp/Support/Table.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

/// A plot of 100 by 100 points on black.
struct Plot {
    Stage stage;
    QImage image = stage.view().grabWindow();

    Plot(const QByteArray& body, const QVariant& data)
        : stage{"Rectangle { color: 'black'; anchors.fill: parent\n" + body + " }",
                {{"given", data}},
                {100, 100}} {}

    int red(int x, int y) const { return qRed(image.pixel(x, y)); }
};

TEST(BarPlot, DrawsEachBarWhereAndAsHighAsItIs) {
    const BarChart chart{
        "Swap", {}, {{0, 0.2, 1, "a", "1"}, {0.4, 0.6, 0.5, "b", "2"}, {0.8, 1, 0, "c", "3"}}};
    Plot plot{"BarPlot { objectName: 'plot'; anchors.fill: parent; color: 'red'; chart: given }",
              QVariant::fromValue(chart)};
    const Table<int, int, bool> points = {{10, 4, true},   {10, 98, true},  {1, 50, false},
                                          {19, 50, false}, {30, 98, false}, {50, 46, false},
                                          {50, 54, true},  {90, 99, true},  {90, 95, false}};
    for (const auto& [x, y, drawn] : points) {
        EXPECT_EQ(plot.red(x, y) > 200, drawn) << x << "," << y;
    }
    auto* bars = static_cast<BarPlot*>(plot.stage.item("plot"));
    for (const auto& [x, bar] : Table<int, int>{{0, 0}, {30, -1}, {59, 1}, {100, -1}}) {
        EXPECT_EQ(bars->barAt(x), bar);
    }
    bars->setMarked(1);
    EXPECT_EQ(bars->tip(), QPointF(50, 50));
    EXPECT_EQ(bars->description(), "Time: 2, Swap: b");
    plot.image = plot.stage.view().grabWindow();
    EXPECT_GT(plot.red(50, 60), 200);
    EXPECT_LT(plot.red(10, 60), 150);
}

TEST(BarPlot, KeepsItsMarkOnTheSameTime) {
    BarChart chart{"Swap", {}, {{0, 0.5, 1, "a", "1"}, {0.5, 1, 1, "b", "2"}}};
    BarPlot bars;
    bars.moveMark(1);
    EXPECT_EQ(bars.marked(), -1);
    bars.setChart(chart);
    const std::pair<int, int> moves[] = {{-1, 1}, {-1, 0}, {-1, 0}, {1, 1}, {1, 1}};
    for (const auto& [by, place] : moves) {
        bars.moveMark(by);
        EXPECT_EQ(bars.marked(), place);
    }
    chart.bars.erase(chart.bars.begin());
    chart.bars[0].value = "c";
    bars.setChart(chart);
    EXPECT_EQ(bars.marked(), 0);
    EXPECT_EQ(bars.value(), "c");
    bars.setChart({});
    EXPECT_EQ(bars.marked(), -1);
    EXPECT_EQ(bars.description(), "");
}

TEST(LoadPlot, DrawsALineOverAnAreaThatFades) {
    LoadCurve curve;
    curve.points = {{0.5, 1}, {0.75, 1}, {1, 0}};
    Plot plot{"LoadPlot { objectName: 'plot'; anchors.fill: parent; color: 'red'; curve: given }",
              QVariant::fromValue(curve)};
    EXPECT_EQ(plot.red(25, 99), 0);
    EXPECT_GT(plot.red(60, 0), 200);
    EXPECT_NEAR(plot.red(60, 10), 0.45 * 255, 12);
    EXPECT_NEAR(plot.red(60, 97), 0.06 * 255, 12);
    EXPECT_EQ(plot.red(95, 50), 0);

    curve.points = {{1, 0.5}};
    plot.stage.item("plot")->setProperty("curve", QVariant::fromValue(curve));
    plot.image = plot.stage.view().grabWindow();
    EXPECT_GT(plot.red(96, 50), 200);
    EXPECT_EQ(plot.red(50, 50), 0);
}

TEST(StackedBar, DrawsItsPartsFromLeftToRight) {
    const Plot plot{"StackedBar { anchors.fill: parent; radius: 20; shares: given; "
                    "colors: ['red', 'lime', 'blue'] }",
                    QVariant::fromValue(QList<qreal>{0.5, 0, 0.5})};
    EXPECT_EQ(plot.image.pixel(25, 50), qRgb(255, 0, 0));
    EXPECT_EQ(plot.image.pixel(75, 50), qRgb(0, 0, 255));
    EXPECT_EQ(plot.image.pixel(98, 50), qRgb(0, 0, 255));
    EXPECT_EQ(plot.image.pixel(1, 1), qRgb(0, 0, 0));
    EXPECT_EQ(plot.image.pixel(98, 98), qRgb(0, 0, 0));
}

} // namespace
} // namespace pacelet
