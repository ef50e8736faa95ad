#include "tests/PaceletApp/Support/Stage.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

namespace pacelet {
namespace {

TEST(Buttons, answerToPointerSpaceAndReturnButNotWhileDisabled) {
    Stage stage{R"(
        id: root
        objectName: "root"
        property int presses: 0
        Column {
            spacing: 10
            PrimaryButton { objectName: "first"; text: "First"; focus: true; onClicked: root.presses += 1 }
            FixButton { objectName: "second"; title: "Quit Safari"; purple: true; symbol: "power"; onClicked: root.presses += 10 }
            SecondaryButton { objectName: "off"; text: "Off"; enabled: false; onClicked: root.presses += 100 }
            Chip { objectName: "chip"; text: "All 3"; onClicked: root.presses += 1000 }
        })"};
    stage.press(Qt::Key_Space);
    stage.press(Qt::Key_Return);
    stage.press(Qt::Key_Enter);
    stage.click("first");
    stage.press(Qt::Key_Tab);
    EXPECT_EQ(stage.focused(), "second");
    EXPECT_TRUE(stage.property("second", "visualFocus").toBool());
    stage.press(Qt::Key_Return);
    stage.click("off");
    stage.press(Qt::Key_Tab);
    EXPECT_EQ(stage.focused(), "chip");
    stage.press(Qt::Key_Return);
    EXPECT_EQ(stage.property("root", "presses").toInt(), 1014);
}

TEST(Controls, sayWhatTheyAre) {
    Stage stage{R"(
        PrimaryButton { objectName: "button"; text: "Get started" }
        CheckBox { objectName: "box"; text: "Start at login"; checked: true }
        Switch { objectName: "switch"; text: "Keep usage history" }
        SearchField { objectName: "search"; prompt: "Search processes" }
        Chip { objectName: "chip"; text: "All 3"; selected: true }
        Spinner { objectName: "spinner" }
        SegmentedControl { objectName: "segments"; title: "Sort"; options: ["CPU", "Memory"] })"};
    const Table<const char*, QAccessible::Role, const char*> cases = {
        {"button", QAccessible::Button, "Get started"},
        {"box", QAccessible::CheckBox, "Start at login"},
        {"switch", QAccessible::CheckBox, "Keep usage history"},
        {"search", QAccessible::EditableText, "Search processes"},
        {"chip", QAccessible::RadioButton, "All 3"},
        {"spinner", QAccessible::Animation, "Working"},
        {"segments", QAccessible::PageTabList, "Sort"},
    };
    for (const auto& [name, role, words] : cases) {
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(stage.find(name));
        ASSERT_NE(spoken, nullptr) << name;
        EXPECT_EQ(spoken->role(), role) << name;
        EXPECT_EQ(spoken->text(QAccessible::Name), words);
    }
}

TEST(Controls, toggleByPointerAndSpace) {
    for (const char* control : {"CheckBox", "Switch"}) {
        Stage stage{QByteArray{control} +
                    R"( { objectName: "it"; text: "It"; focus: true; width: 200 })"};
        stage.press(Qt::Key_Space);
        EXPECT_TRUE(stage.property("it", "checked").toBool()) << control;
        stage.click("it");
        EXPECT_FALSE(stage.property("it", "checked").toBool()) << control;
    }
}

TEST(SegmentedControl, isWorkedByArrowsAndPointerAndStopsAtItsEnds) {
    Stage stage{R"(
        SegmentedControl {
            objectName: "it"; title: "Range"; focus: true; width: 300
            options: ["24 hours", "7 days", "30 days"]
            onChosen: index => current = index
        })"};
    const std::pair<int, int> steps[] = {
        {Qt::Key_Left, 0}, {Qt::Key_Right, 1}, {Qt::Key_Right, 2}, {Qt::Key_Right, 2}};
    for (const auto& [key, current] : steps) {
        stage.press(key);
        EXPECT_EQ(stage.property("it", "current").toInt(), current);
    }
    stage.click("it");
    EXPECT_EQ(stage.property("it", "current").toInt(), 1);
}

TEST(SearchField, isEmptiedByEscapeWhichThenGoesOn) {
    Stage stage{R"(
        objectName: "root"
        property int escapes: 0
        Keys.onEscapePressed: escapes += 1
        SearchField { objectName: "search"; prompt: "Search"; focus: true })"};
    stage.item("search")->forceActiveFocus();
    stage.type("chrome");
    EXPECT_EQ(stage.property("search", "text").toString(), "chrome");
    stage.press(Qt::Key_Escape);
    EXPECT_EQ(stage.property("search", "text").toString(), "");
    EXPECT_EQ(stage.property("root", "escapes").toInt(), 0);
    stage.press(Qt::Key_Escape);
    EXPECT_EQ(stage.property("root", "escapes").toInt(), 1);
}

TEST(ScrollArea, bringsWhatHasTheFocusIntoView) {
    Stage stage{R"(
        ScrollArea {
            objectName: "area"; width: 300; height: 200; spacing: 10
            PrimaryButton { objectName: "top"; text: "Top" }
            Item { width: 10; height: 900 }
            PrimaryButton { objectName: "bottom"; text: "Bottom" }
        })"};
    stage.item("top")->forceActiveFocus();
    EXPECT_EQ(stage.property("area", "contentY").toReal(), 0);
    stage.press(Qt::Key_Tab);
    EXPECT_EQ(stage.focused(), "bottom");
    EXPECT_GT(stage.property("area", "contentY").toReal(), 700);
    stage.press(Qt::Key_Home);
    EXPECT_EQ(stage.property("area", "contentY").toReal(), 0);
    stage.press(Qt::Key_PageDown);
    EXPECT_EQ(stage.property("area", "contentY").toReal(), 152);
}

TEST(Spinner, turnsOnlyWhileItCanBeSeenAndMotionIsWanted) {
    Stage stage{R"(
        objectName: "root"
        property bool still: true
        onStillChanged: Theme.reducedMotion = still
        Spinner { objectName: "it" })"};
    const auto turns = [&] {
        const int before = stage.property("it", "step").toInt();
        return QTest::qWaitFor([&] { return stage.property("it", "step").toInt() != before; }, 250);
    };
    EXPECT_FALSE(turns());
    stage.find("root")->setProperty("still", false);
    EXPECT_TRUE(turns());
    stage.item("it")->setVisible(false);
    EXPECT_FALSE(turns());
    stage.item("it")->setVisible(true);
    stage.view().hide();
    EXPECT_FALSE(turns());
}

TEST(BoxPainter, staysWithinTheClipAroundIt) {
    Stage stage{R"(
        BoxPainter { width: 40; height: 40; fill: "red" }
        Item {
            x: 100; width: 40; height: 40; clip: true
            BoxPainter { y: 20; width: 40; height: 40; fill: "red" }
            BoxPainter { y: 60; width: 40; height: 40; fill: "red" }
        })"};
    const QImage picture = stage.view().grabWindow();
    const auto isRed = [&](int x, int y) { return picture.pixelColor(x, y) == QColor{Qt::red}; };
    EXPECT_TRUE(isRed(20, 20));
    EXPECT_TRUE(isRed(120, 30));
    EXPECT_FALSE(isRed(120, 50)); // half of it is cut off
    EXPECT_FALSE(isRed(120, 80)); // all of it is
}

QByteArray dialog(bool destructive) {
    return QByteArray{R"(
        PrimaryButton { objectName: "behind"; text: "Behind"; focus: true }
        id: root
        property string answers
        objectName: "root"
        AlertDialog {
            visible: true
            title: "Quit Safari?"
            message: "Safari may ask you to save your work first."
            confirmText: "Quit Safari"
            destructive: )"} +
           (destructive ? "true" : "false") + R"(
            onConfirmed: root.answers += "confirmed "
            onCancelled: root.answers += "cancelled "
        })";
}

TEST(AlertDialog, keysAnswerItAndTheHarmlessAnswerComesFirstWhereWorkMayBeLost) {
    const Table<bool, std::vector<int>, const char*> cases = {
        {false, {Qt::Key_Return}, "confirmed "},
        {false, {Qt::Key_Enter}, "confirmed "},
        {false, {Qt::Key_Escape}, "cancelled "},
        {false, {Qt::Key_Tab, Qt::Key_Return}, "cancelled "},
        {false, {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}, "confirmed "},
        {true, {Qt::Key_Return}, "cancelled "},
        {true, {Qt::Key_Escape}, "cancelled "},
        {true, {Qt::Key_Tab, Qt::Key_Return}, "confirmed "},
    };
    for (const auto& [destructive, keys, answers] : cases) {
        Stage stage{dialog(destructive)};
        ASSERT_TRUE(QTest::qWaitFor([&] { return stage.focused() != "behind"; }));
        for (const int key : keys) {
            stage.press(key);
        }
        EXPECT_EQ(stage.property("root", "answers").toString(), answers);
    }
}

TEST(Focus, staysInAModalDialogAndNeverOnWhatCannotBeSeen) {
    Stage asking{dialog(true)};
    ASSERT_TRUE(QTest::qWaitFor([&] { return asking.focused() != "behind"; }));
    asking.item("behind")->forceActiveFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return asking.focused() != "behind"; }));

    Stage stage{R"(
        id: root
        Row {
            PrimaryButton { objectName: "first"; text: "First" }
            PrimaryButton { objectName: "second"; text: "Second" }
        }
        FocusKeeper { place: root })"};
    stage.item("first")->forceActiveFocus();
    stage.item("first")->setVisible(false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stage.focused() == "second"; }));
}

} // namespace
} // namespace pacelet
