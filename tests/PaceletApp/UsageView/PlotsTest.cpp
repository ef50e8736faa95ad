#include "PaceletApp/UsageView/BarPlot.h"
#include "PaceletApp/UsageView/LoadPlot.h"
#include "PaceletApp/UsageView/StackedBar.h"
#include "PaceletApp/UsageView/StripPlot.h"
#include "tests/PaceletApp/Support/Stage.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace pacelet {
namespace {

/// What a plot of this size paints in red on black, on a screen of half a pixel to a point: a sign
/// a pixel, the brighter the fuller, in lines that begin and end with "|".
std::string painted(QQuickPaintedItem& plot, QSize size) {
    constexpr double scale = 0.5;
    plot.setSize(size);
    plot.setProperty("color", QColor{Qt::red});
    QImage image{size * scale, QImage::Format_RGB32};
    image.fill(Qt::black);
    QPainter painter{&image};
    painter.scale(scale, scale);
    plot.paint(&painter);
    std::string text;
    for (int y = 0; y < image.height(); ++y) {
        text += '|';
        for (int x = 0; x < image.width(); ++x) {
            text += " .:+*#"[qRed(image.pixel(x, y)) / 43];
        }
        text += "|\n";
    }
    return text;
}

TEST(BarPlot, DrawsEachBarWhereAndAsHighAsItIs) {
    BarPlot bars;
    bars.setChart({"Swap",
                   {},
                   {{0, 0.25, 1, "a", "1"},
                    {0.25, 0.5, 0.5, "b", "2"},
                    {0.5, 0.75, 0, "c", "3"},
                    {0.8, 0.81, 0.7, "d", "4"}}});
    bars.setProperty("chosen", 0);
    const std::string picture = painted(bars, {128, 16});
    EXPECT_EQ(picture, "|  +##########+                                                  |\n"
                       "|  ############                                                  |\n"
                       "|  ############                                     .            |\n"
                       "|  ############                                     :            |\n"
                       "|  ############    .::::::::::.                     :            |\n"
                       "|  ############    ::::::::::::                     :            |\n"
                       "|  ############    ::::::::::::                     :            |\n"
                       "|  ############    ::::::::::::    ............     :            |\n");
    bars.setMarked(0);
    bars.setProperty("chosen", 1);
    EXPECT_EQ(painted(bars, {128, 16}), picture) << "the marked one stands out";
    for (const auto& [x, bar] : Table<int, int>{{0, 0}, {31, 0}, {32, 1}, {100, -1}}) {
        EXPECT_EQ(bars.barAt(x), bar);
    }
    bars.setMarked(1);
    EXPECT_EQ(bars.tip(), QPointF(48, 8));
    EXPECT_EQ(bars.description(), "Time: 2, Swap: b");
    bars.setMarked(-9);
    EXPECT_EQ(bars.marked(), -1);
    bars.moveMark(1);
    EXPECT_EQ(bars.marked(), 0);
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
    LoadPlot plot;
    LoadCurve curve;
    curve.points = {{0.3, 1}, {0.65, 0.9}, {1, 0}};
    plot.setProperty("curve", QVariant::fromValue(curve));
    EXPECT_EQ(painted(plot, {80, 16}), "|           +###****+++:::.              |\n"
                                       "|            ::::+++++++**+#:            |\n"
                                       "|            :::::::::::::::+#+          |\n"
                                       "|            .................+*+.       |\n"
                                       "|            ...................:**.     |\n"
                                       "|            .....................:**.   |\n"
                                       "|                                   .+*: |\n"
                                       "|                                      +#|\n");
    curve.points = {{1, 0.5}};
    plot.setProperty("curve", QVariant::fromValue(curve));
    EXPECT_EQ(painted(plot, {16, 12}), "|        |\n"
                                       "|        |\n"
                                       "|     *#:|\n"
                                       "|     *#:|\n"
                                       "|        |\n"
                                       "|        |\n");
}

TEST(StackedBar, DrawsItsPartsFromLeftToRight) {
    StackedBar bar;
    bar.setProperty("radius", 4);
    bar.setProperty("colors",
                    QVariant::fromValue(QList<QColor>{0xff0000, 0x00ff00, 0xa00000, 0x00ff00}));
    for (const auto& [shares, picture] : Table<QList<qreal>, const char*>{
             {{0.5, 0, 0.475, 0},
              "|.########:+++++++++ |\n"
              "|#########:+++++++++.|\n"
              "|#########:+++++++++.|\n"
              "|#########:+++++++++.|\n"
              "|#########:+++++++++.|\n"
              "|.########:+++++++++ |\n"},
             {{0.25, 0.25, 0.5},
              "|.###:     +++++++++.|\n"
              "|####:     ++++++++++|\n"
              "|####:     ++++++++++|\n"
              "|####:     ++++++++++|\n"
              "|####:     ++++++++++|\n"
              "|.###:     +++++++++.|\n"},
         }) {
        bar.setProperty("shares", QVariant::fromValue(shares));
        EXPECT_EQ(painted(bar, {40, 12}), picture);
    }
}

TEST(StripPlot, IsBrightWhereMuchWasAndFaintBesideTheStretch) {
    StripPlot strip;
    strip.setProperty("ground", QColor{0x300000});
    strip.setProperty("shares", QVariant::fromValue(QList<qreal>{0.5, 0, 1, 0.1, 1, 0, 0.5}));
    EXPECT_EQ(painted(strip, {76, 16}), "|:****......#####++++++#####......****:|\n"
                                        "|*****......#####++++++#####......*****|\n"
                                        "|*****......#####++++++#####......*****|\n"
                                        "|*****......#####++++++#####......*****|\n"
                                        "|*****......#####++++++#####......*****|\n"
                                        "|*****......#####++++++#####......*****|\n"
                                        "|*****......#####++++++#####......*****|\n"
                                        "|:****......#####++++++#####......****:|\n");
    strip.setProperty("from", 2.5 / 7);
    strip.setProperty("to", 4.5 / 7);
    EXPECT_EQ(painted(strip, {76, 6}), "|.::::......#####++++++:::::......::::.|\n"
                                       "|.::::......#####++++++:::::......::::.|\n"
                                       "|.::::......#####++++++:::::......::::.|\n");
}

TEST(Plots, AreDrawnAnewWhenTheyChange) {
    LoadCurve curve;
    curve.points = {{0, 1}, {1, 1}};
    Stage stage{"Column { anchors.fill: parent\n"
                "BarPlot { objectName: 'bars'; width: 100; height: 20; chart: bars; color: 'blue' }"
                "LoadPlot { objectName: 'load'; width: 100; height: 20; color: 'blue' }"
                "StackedBar { objectName: 'stack'; width: 100; height: 20; colors: ['red'] }"
                "StripPlot { objectName: 'strip'; width: 100; height: 20 } }",
                {{"bars", QVariant::fromValue(BarChart{"", {}, {{0, 1, 1, "a", "1"}}})}},
                {100, 100}};
    const Table<const char*, const char*, QVariant> changes = {
        {"bars", "color", QColor{Qt::red}},
        {"load", "curve", QVariant::fromValue(curve)},
        {"stack", "shares", QVariant::fromValue(QList<qreal>{1})},
        {"strip", "ground", QColor{Qt::red}},
    };
    for (const auto& [plot, property, value] : changes) {
        const QImage before = stage.view().grabWindow();
        stage.item(plot)->setProperty(property, value);
        EXPECT_NE(stage.view().grabWindow(), before) << plot;
    }
}

} // namespace
} // namespace pacelet
