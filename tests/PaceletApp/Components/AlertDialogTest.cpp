#include "tests/PaceletApp/Support/Stage.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QTest>

#include <gtest/gtest.h>

namespace pacelet {
namespace {

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

} // namespace
} // namespace pacelet
