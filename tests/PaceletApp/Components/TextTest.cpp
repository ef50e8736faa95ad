#include "PaceletApp/Components/Typography.h"
#include "tests/PaceletApp/Support/Stage.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QTest>

#include <gtest/gtest.h>

namespace pacelet {
namespace {

TEST(Typography, sizesAreLogicalPixelsAndMayBeFractions) {
    const Typography fonts;
    for (const QFont& font : {fonts.text(13.5), fonts.figures(13.5), fonts.mono(13.5)}) {
        EXPECT_NEAR(font.pointSizeF() * 96 / 72, 13.5, 1e-9);
    }
    EXPECT_EQ(QFontInfo{fonts.text(12)}.family(), "Inter");
    EXPECT_EQ(QFontInfo{fonts.mono(12)}.family(), "JetBrains Mono");
}

TEST(Typography, figuresHaveDigitsOfOneWidthInEveryWeight) {
    const Typography fonts;
    for (const int weight : {QFont::Normal, QFont::DemiBold, QFont::Bold}) {
        const QFontMetricsF metrics{fonts.figures(26, weight)};
        for (char16_t digit = u'1'; digit <= u'9'; ++digit) {
            EXPECT_EQ(metrics.horizontalAdvance(QChar{digit}), metrics.horizontalAdvance(u'0'));
        }
        EXPECT_TRUE(metrics.inFont(u'%') && metrics.inFont(u'·') && metrics.inFont(u'…'));
        EXPECT_NE(metrics.horizontalAdvance(u'i'), metrics.horizontalAdvance(u'm'));
    }
    EXPECT_GT(QFontMetricsF{fonts.figures(26, QFont::Bold)}.horizontalAdvance(QStringLiteral("kB")),
              QFontMetricsF{fonts.figures(26)}.horizontalAdvance(QStringLiteral("kB")));
}

bool tipShows(Stage& stage, const QString& words, int patience = 700) {
    return QTest::qWaitFor(
        [&] {
            for (QQuickItem* item : stage.view().findChildren<QQuickItem*>()) {
                if (item->isVisible() && item->objectName() == "tip words" &&
                    item->property("text").toString() == words) {
                    return true;
                }
            }
            return false;
        },
        patience);
}

TEST(ElidedText, tellsItselfWholeOnlyWhereItDoesNotFit) {
    Stage stage{R"(
        ElidedText { objectName: "long"; y: 100; width: 60; text: "A rather long name" }
        ElidedText { objectName: "short"; y: 200; width: 200; text: "Short" })"};
    EXPECT_TRUE(stage.property("long", "truncated").toBool());
    stage.hover("short");
    EXPECT_FALSE(tipShows(stage, "Short"));
    stage.hover("long");
    EXPECT_TRUE(tipShows(stage, "A rather long name", 5000));
    stage.hover("short");
    EXPECT_FALSE(tipShows(stage, "A rather long name"));
}

} // namespace
} // namespace pacelet
