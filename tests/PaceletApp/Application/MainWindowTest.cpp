#include "PaceletApp/Application/MainWindow.h"
#include "PaceletApp/Application/Application.h"
#include "tests/PaceletApp/Monitor/MonitorRig.h"
#include "tests/PaceletApp/Support/Stage.h"

#include <QQuickItem>
#include <QTest>

#include <gmock/gmock.h>

namespace pacelet::testing {
namespace {

/// The whole window on a small simulated Mac in virtual time.
class MainWindowTest : public MonitorRig {
protected:
    MainWindowTest() {
        window.show();
        settle();
    }

    void settle() {
        scheduler.settle();
        QTest::qWait(250); // popups take their time
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&window.view(), static_cast<Qt::Key>(key), modifiers);
        settle();
    }

    /// What the window shows of it.
    std::string shown(const char* property) {
        return window.view().rootObject()->property(property).toString().toStdString();
    }

    Application objects{mac.platform(), scheduler, smallCatalog()};
    SharedObjects shared = objects.shared();
    MainWindow window{shared, mac.workspace};
};

TEST_F(MainWindowTest, measuresAtOnceAndFollowsTheKeyboardFromScreenToScreen) {
    EXPECT_TRUE(shared.monitor.windowVisible());
    EXPECT_EQ(shared.monitor.groups().size(), 3U);
    press(Qt::Key_5, Qt::ControlModifier);
    EXPECT_EQ(shared.router.screen(), Screen::usage);
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(shared.router.screen(), Screen::processes);
    EXPECT_EQ(shared.router.focusSearch(), 1);
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(shared.monitor.windowVisible());
}

TEST_F(MainWindowTest, showsTheAnswerAndOffersWhatCanBeDone) {
    QQuickItem& content = *window.view().contentItem();
    EXPECT_THAT(textsBelow(content), ::testing::IsSupersetOf({"Your Mac is running smoothly.",
                                                              "What's using your CPU", "Notes"}));
    const QPoint quit = edgesBelow(content, QStringLiteral("Quit Notes")).center().toPoint();
    QTest::mouseClick(&window.view(), Qt::LeftButton, {}, quit);
    settle();
    EXPECT_EQ(shown("confirmTitle"), "Quit Notes?");
    press(Qt::Key_Escape);
    EXPECT_EQ(shown("confirming"), "false");
    EXPECT_NE(shared.monitor.group(notes), nullptr);
}

TEST_F(MainWindowTest, asksBeforeItQuitsAnApplicationAndSaysHowItWent) {
    shared.actions.perform(FixID::quitApp, shared.monitor.group(notes));
    settle();
    EXPECT_EQ(shown("confirmTitle"), "Quit Notes?");
    EXPECT_EQ(shown("confirmMessage"), "Notes may ask you to save your work first.");
    press(Qt::Key_2, Qt::ControlModifier); // the question stands before it
    EXPECT_EQ(shared.router.screen(), Screen::overview);
    press(Qt::Key_Return);
    advance(3);
    EXPECT_EQ(shown("confirming"), "false");
    EXPECT_EQ(shown("toast"), "Done");
    advance(4);
    EXPECT_EQ(shown("toast"), "");
    EXPECT_EQ(shared.monitor.group(notes), nullptr);
}

} // namespace
} // namespace pacelet::testing
