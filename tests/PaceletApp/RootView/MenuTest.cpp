#include "PaceletApp/Application/ApplicationMenu.h"
#include "PaceletApp/RootView/MenuEntry.h"
#include "tests/PaceletApp/Support/ApplicationRig.h"

#include <QMenu>
#include <QSignalSpy>

#include <map>

namespace pacelet::testing {
namespace {

TEST(MenuEntries, HaveTheirKeysAndWaitForTheUpdater) {
    for (const bool can : {true, false}) {
        std::string lines;
        for (const MenuEntry& entry : menuEntries(commands(true), can)) {
            lines += (entry.startsGroup ? "| " : "") + entry.title.toStdString() + " [" +
                     entry.keys.toStdString() + (entry.available ? "] " : "] off ");
        }
        EXPECT_EQ(lines, std::string{"Check now [Ctrl+R] Find [Ctrl+F] "
                                     "| Overview [Ctrl+1] Processes [Ctrl+2] "
                                     "Background Items [Ctrl+3] Internet [Ctrl+4] Usage [Ctrl+5] "
                                     "| Settings… [Ctrl+,] Check for Updates… "} +
                             (can ? "[] " : "[] off ") +
                             "| Close window [Ctrl+W] Quit Pacelet [Ctrl+Q] ");
    }
}

/// The menu of the main window.
class MenuTest : public ApplicationRig {
protected:
    void SetUp() override {
        launch("quiet");
        open();
    }

    void openMenu() {
        probe->click("menu button");
        ASSERT_TRUE(comesUp("Quit Pacelet"));
    }

    std::int64_t looks() { return calls("/bin/ps"); }
};

TEST_F(MenuTest, ListsWhatTheWindowCanDo) {
    EXPECT_FALSE(probe->shows("Check now"));
    openMenu();
    EXPECT_THAT(probe->texts(), IsSupersetOf({"Check now", "Ctrl+R", "Find", "Ctrl+F", "Ctrl+1",
                                              "Ctrl+5", "Settings…", "Ctrl+,", "Close window"}));
    EXPECT_FALSE(probe->shows("Check for Updates…"));
    const auto before = looks();
    probe->clickText("Check now");
    EXPECT_TRUE(goesAway("Check now"));
    settle();
    EXPECT_EQ(looks(), before + 1);

    openMenu();
    probe->click("menu button"); // the same button closes it
    EXPECT_TRUE(goesAway("Check now"));
    openMenu();
    probe->press(Qt::Key_Escape);
    EXPECT_TRUE(goesAway("Check now"));
    openMenu();
    probe->clickText("Close window");
    closes(&Application::window);
}

TEST_F(MenuTest, IsWalkedByKeys) {
    probe->item("menu button")->forceActiveFocus(Qt::TabFocusReason);
    const auto choose = [&](int steps) {
        probe->press(Qt::Key_Return); // opens with the first line chosen
        ASSERT_TRUE(comesUp("Quit Pacelet"));
        for (int step = 0; step < steps; ++step) {
            probe->press(Qt::Key_Down);
        }
        probe->press(Qt::Key_Return);
        ASSERT_TRUE(goesAway("Quit Pacelet"));
        settle();
    };
    const auto before = looks();
    choose(0);
    EXPECT_EQ(looks(), before + 1);
    choose(3);
    EXPECT_EQ(app().router().screen(), Screen::processes);
    QSignalSpy quit{&app(), &Application::quitRequested};
    choose(20); // the last line is the end
    EXPECT_EQ(quit.count(), 1);
    choose(7);
    ASSERT_NE(app().settings(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(app().settings()));
}

TEST_F(MenuTest, TheSidebarLeadsFromScreenToScreenAndNotBehindAQuestion) {
    probe->clickText("Usage");
    EXPECT_EQ(app().router().screen(), Screen::usage);
    probe->press(Qt::Key_Tab);
    probe->press(Qt::Key_Return);
    EXPECT_NE(app().router().screen(), Screen::usage);
    const Screen there = app().router().screen();
    app().actions().perform(FixID::restartMac, nullptr);
    ASSERT_TRUE(comesUp("Restart your Mac?"));
    probe->clickText("Background Items");
    EXPECT_EQ(app().router().screen(), there);
}

TEST_F(MenuTest, StandsInTheMenuBarOfAMac) {
    launch("quiet");
    bool isAboutShown = false;
    const ApplicationMenu menu{app(), [&] { isAboutShown = true; }};
    std::map<std::string, QAction*> items;
    std::string lines;
    for (const QAction* title : menu.bar().actions()) {
        lines += title->text().toStdString() + ":";
        for (QAction* item : title->menu()->actions()) {
            items[item->text().toStdString()] = item;
            lines += item->isSeparator() ? " |" : " " + item->text().toStdString();
        }
        lines += "\n";
    }
    EXPECT_EQ(lines, "File: About Pacelet Settings… Close window Quit Pacelet\n"
                     "View: Check now Find | Overview Processes Background Items Internet Usage\n");
    EXPECT_EQ(items["Usage"]->shortcut(), QKeySequence{Qt::CTRL | Qt::Key_5});
    items["About Pacelet"]->trigger();
    EXPECT_TRUE(isAboutShown);

    settle();
    const auto before = looks();
    items["Check now"]->trigger(); // without a window, too
    settle();
    EXPECT_EQ(looks(), before + 1);
    EXPECT_EQ(app().window(), nullptr);
    items["Usage"]->trigger();
    ASSERT_NE(app().window(), nullptr);
    EXPECT_EQ(app().router().screen(), Screen::usage);
    probe.emplace(*app().window());
    EXPECT_FALSE(probe->item("menu button")->isVisible());
    items["Close window"]->trigger();
    closes(&Application::window);
}

} // namespace
} // namespace pacelet::testing
