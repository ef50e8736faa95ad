#include "tests/PaceletApp/Support/Stage.h"

#include <gmock/gmock.h>

namespace pacelet {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;

constexpr QSize windowSize{1000, 700};

QByteArray root(const QByteArray& more) {
    return R"(
        RootView {
            id: shell
            objectName: "shell"
            property string log
            anchors.fill: parent
            ready: true
            current: 0
            screens: ListModel {
                ListElement { title: "Overview"; symbol: "square.grid.2x2"; count: "" }
                ListElement { title: "Processes"; symbol: "waveform.path.ecg"; count: "128" }
            }
            content: Text { text: "The screen" }
            onChosen: screen => { current = screen; log += "chosen " + screen + " " }
            onConfirmed: { log += "confirmed "; confirming = false }
            onConfirmationCancelled: log += "cancelled "
            onRestartAsked: log += "restart "
            onStuckDismissed: log += "later "
            )" +
           more + "}";
}

TEST(RootView, leadsFromScreenToScreenByPointerAndKeys) {
    Stage stage{root(""), {}, windowSize};
    EXPECT_THAT(stage.texts(), IsSupersetOf({"Pacelet", "Overview", "Processes", "128",
                                             "Works locally. Nothing is uploaded.", "The screen"}));
    stage.clickText("Processes");
    EXPECT_EQ(stage.property("shell", "current").toInt(), 1);
    stage.press(Qt::Key_Tab);
    stage.press(Qt::Key_Return);
    EXPECT_EQ(stage.property("shell", "log").toString(), "chosen 1 chosen 0 ");
}

TEST(RootView, withoutACatalogSaysSoAndShowsNoScreen) {
    Stage stage{root("ready: false\n").replace("ready: true", ""), {}, windowSize};
    EXPECT_THAT(stage.texts(),
                Contains("Pacelet couldn't load its process list. Reinstall Pacelet."));
    EXPECT_THAT(stage.texts(), Not(Contains("The screen")));
}

TEST(RootView, asksAndAnswersOverTheWindow) {
    Stage stage{root(R"(
        confirming: true; confirmTitle: "Quit Safari?"; confirmMessage: "Save first."
        confirmButton: "Quit Safari"; toast: "Done"
        stuckTitle: "Safari won't quit. Restart your Mac to clear it.")"),
                {},
                windowSize};
    EXPECT_THAT(stage.texts(),
                IsSupersetOf({"Quit Safari?", "Save first.", "Quit Safari", "Cancel", "Done"}));
    stage.clickText("Processes"); // behind the question: nothing
    stage.clickText("Quit Safari");
    EXPECT_EQ(stage.property("shell", "log").toString(), "confirmed ");
    stage.find("shell")->setProperty("stuck", true);
    EXPECT_THAT(stage.texts(), IsSupersetOf({"Safari won't quit. Restart your Mac to clear it.",
                                             "Restart…", "Not now"}));
    stage.clickText("Not now");
    stage.clickText("Restart…");
    EXPECT_EQ(stage.property("shell", "log").toString(), "confirmed later restart ");
}

} // namespace
} // namespace pacelet
