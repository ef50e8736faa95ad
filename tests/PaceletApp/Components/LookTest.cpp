#include "PaceletApp/Components/Look.h"

#include "Core/Sampling/ProcessGroup.h"
#include "tests/PaceletApp/Support/Stage.h"

#include <QAccessible>
#include <QColor>

#include <gtest/gtest.h>

namespace pacelet {
namespace {

TEST(Look, pillsCarryTheirWordsColoursAndSpokenNames) {
    struct Case {
        const char* qml;
        QString text;
        QString symbol;
        QColor fg;
        QColor bg;
        QString spoken;
    };
    const Case cases[] = {
        {"VerdictPill { verdict: \"safe\"", "Safe to quit", "checkmark.circle",
         QColor{110, 231, 183}, QColor{20, 51, 42}, "Verdict: Safe to quit"},
        {"VerdictPill { verdict: \"review\"", "Review", "exclamationmark.triangle",
         QColor{245, 184, 65}, QColor{58, 46, 20}, "Verdict: Review"},
        {"VerdictPill { verdict: \"leave\"", "Leave it", "checkmark.shield", QColor{196, 196, 204},
         QColor{36, 36, 44}, "Verdict: Leave it"},
        {"StatusPill { status: \"quiet\"", "All quiet", "", QColor{110, 231, 183},
         QColor{20, 51, 42}, "Status: All quiet"},
        {"StatusPill { status: \"busy\"", "Busy", "", QColor{245, 184, 65}, QColor{58, 46, 20},
         "Status: Busy"},
        {"StatusPill { status: \"struggling\"", "Struggling", "", QColor{248, 113, 113},
         QColor{58, 28, 31}, "Status: Struggling"},
    };
    for (const Case& each : cases) {
        Stage stage{QByteArray{each.qml} + "; objectName: \"pill\" }"};
        EXPECT_EQ(stage.property("pill", "text").toString(), each.text);
        EXPECT_EQ(stage.property("pill", "symbol").toString(), each.symbol);
        EXPECT_EQ(stage.property("pill", "fg").value<QColor>(), each.fg);
        EXPECT_EQ(stage.property("pill", "bg").value<QColor>(), each.bg);
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(stage.find("pill"));
        ASSERT_NE(spoken, nullptr);
        EXPECT_EQ(spoken->text(QAccessible::Name), each.spoken);
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

} // namespace
} // namespace pacelet
