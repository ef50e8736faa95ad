#include "PaceletApp/Components/Look.h"

#include "Core/Sampling/ProcessGroup.h"
#include "tests/PaceletApp/Support/Stage.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QAccessible>
#include <QColor>

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
