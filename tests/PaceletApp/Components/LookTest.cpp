#include "PaceletApp/Components/Look.h"
#include "Core/Sampling/ProcessGroup.h"
#include "PaceletApp/Components/Typography.h"
#include "tests/PaceletApp/Support/Stage.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QAccessible>
#include <QColor>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QTest>

#include <cmath>
#include <gtest/gtest.h>

namespace pacelet {
namespace {

TEST(Look, pillsCarryTheirWordsColoursAndSpokenNames) {
    const QColor green{110, 231, 183};
    const QColor amber{245, 184, 65};
    const Table<const char*, const char*, const char*, QColor> cases = {
        {"VerdictPill { verdict: 'safe'", "checkmark.circle", "Verdict: Safe to quit", green},
        {"VerdictPill { verdict: 'review'", "exclamationmark.triangle", "Verdict: Review", amber},
        {"VerdictPill { verdict: 'leave'", "checkmark.shield", "Verdict: Leave it",
         QColor{196, 196, 204}},
        {"StatusPill { status: 'quiet'", "", "Status: All quiet", green},
        {"StatusPill { status: 'busy'", "", "Status: Busy", amber},
        {"StatusPill { status: 'struggling'", "", "Status: Struggling", QColor{248, 113, 113}},
    };
    for (const auto& [qml, symbol, words, color] : cases) {
        Stage stage{QByteArray{qml} + "; objectName: 'pill' }"};
        EXPECT_EQ(stage.property("pill", "symbol").toString(), symbol);
        EXPECT_EQ(stage.property("pill", "fg").value<QColor>(), color);
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(stage.find("pill"));
        ASSERT_NE(spoken, nullptr);
        EXPECT_EQ(spoken->text(QAccessible::Name), words);
        EXPECT_TRUE(QString{words}.endsWith(u' ' + stage.property("pill", "text").toString()));
    }
}

TEST(Look, wordsStandOutWhereHighContrastIsWanted) {
    Stage stage{"Item { objectName: 'theme'; property var colours: Theme\n"
                "Component.onCompleted: Theme.highContrast = true }"};
    const auto* const theme = stage.property("theme", "colours").value<QObject*>();
    const auto light = [&](const char* name) {
        const auto colour = theme->property(name).value<QColor>();
        const auto part = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
               0.0722 * part(colour.blueF()) + 0.05;
    };
    const Table<const char*, const char*, double> cases = {{"text", "raised", 7},
                                                           {"text2", "raised", 7},
                                                           {"text3", "raised", 7},
                                                           {"text", "accentBG", 7},
                                                           {"amber", "amberBG", 7},
                                                           {"green", "greenBG", 7},
                                                           {"red", "redBG", 7},
                                                           {"neutral", "neutralBG", 7},
                                                           {"textOnAccent", "button", 4.5},
                                                           {"textOnAccent", "danger", 4.5},
                                                           {"purpleText", "purpleFill", 7},
                                                           {"line", "card", 4.5},
                                                           {"controlBorder", "raised", 4.5}};
    for (const auto& [words, ground, least] : cases) {
        EXPECT_GE(light(words) / light(ground), least) << words << " on " << ground;
    }
}

TEST(Look, onlyWhatActsOnABusyProgramIsPurple) {
    ProcessGroup group;
    group.displayName = "Safari";
    EXPECT_EQ(lookOf(FixID::quitApp, &group).title, "Quit Safari");
    EXPECT_EQ(lookOf(FixID::quitApp, nullptr).title, "Quit app");
    for (int each = 0; each <= static_cast<int>(FixID::restartMac); ++each) {
        const auto fix = static_cast<FixID>(each);
        const FixLook look = lookOf(fix, &group);
        EXPECT_EQ(look.purple, fix == FixID::quitApp || fix == FixID::rebuildSpotlightIndex);
        EXPECT_EQ(fixIDFromRawValue(look.fix.toStdString()), fix);
    }
}

TEST(Look, aTextThatIsNoRawValueGivesNoPill) {
    const Looks looks;
    EXPECT_EQ(looks.verdict({}), PillLook{});
    EXPECT_EQ(looks.status(QStringLiteral("safe")), PillLook{});
    Stage stage{"VerdictPill { objectName: \"pill\" }"};
    EXPECT_FALSE(stage.item("pill")->isVisible());
}

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
