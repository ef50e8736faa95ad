#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Application/WishFollower.h"
#include "PaceletApp/InternetView/InternetModel.h"
#include "PaceletApp/OverviewView/CauseItem.h"

#include "tests/PaceletApp/Monitor/MonitorRig.h"
#include "tests/PaceletApp/Support/ApplicationRig.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>

namespace pacelet::testing {
namespace {

/// The program on a small machine whose loads a test sets.
class ApplicationTest : public ApplicationRig {
protected:
    void launch(const std::optional<ProcessCatalog>& catalog = smallCatalog()) {
        ApplicationRig::launch(smallMac(), catalog);
    }

    void setLoad(std::string_view name, double percent) {
        const auto world = mac().machine.lock();
        world->processes.find(name)->setLoad({.percent = percent}, world->time.awake);
    }

    std::int64_t samples() { return calls("/bin/ps"); }

    const std::string notes = "/Applications/Notes.app";
};

TEST_F(ApplicationTest, SamplesBeforeThereIsAWindow) {
    launch();
    pass(0);
    EXPECT_EQ(samples(), 1);
    EXPECT_EQ(app().window(), nullptr);
    pass(30);
    EXPECT_EQ(samples(), 2);
    EXPECT_TRUE(app().monitor().explanations().empty());
    open();
    EXPECT_EQ(samples(), 3);
    EXPECT_TRUE(app().monitor().windowVisible());
    EXPECT_FALSE(app().monitor().explanations().empty());
}

TEST_F(ApplicationTest, ShowsTheMachineAndKeepsItsAgeCurrent) {
    launch();
    open();
    EXPECT_THAT(probe->texts(),
                IsSupersetOf({"Pacelet", "Overview", "Live · checked 0s ago",
                              "Your Mac is running smoothly.", "What's using your CPU", "Notes"}));
    pass(2.1);
    EXPECT_TRUE(probe->shows("Live · checked 2s ago"));
    mac().machine.jumpWallClock(Seconds{-3600});
    pass(0.95);
    EXPECT_TRUE(probe->shows("Live · checked 0s ago"));
    probe->clickText("Pause");
    pass(60);
    EXPECT_THAT(probe->texts(), IsSupersetOf({"Paused", "Resume"}));
    const auto before = samples();
    pass(60);
    EXPECT_EQ(samples(), before);
    probe->clickText("Resume");
    pass(0);
    EXPECT_TRUE(probe->shows("Live · checked 0s ago"));
}

TEST_F(ApplicationTest, TheMainFixAsksActsAndReports) {
    launch();
    setLoad("Notes", 390);
    open();
    pass(60);
    ASSERT_THAT(probe->texts(), Contains("Quit Notes"));
    const QRectF hero = probe->edges("Quit Notes");
    probe->clickText("Quit Notes");
    EXPECT_TRUE(comesUp("Quit Notes?"));
    EXPECT_TRUE(probe->shows("Notes may ask you to save your work first."));
    probe->press(Qt::Key_2, Qt::ControlModifier); // the question stands before it
    EXPECT_EQ(app().router().screen(), Screen::overview);
    probe->press(Qt::Key_Escape);
    pass(30);
    EXPECT_EQ(app().monitor().groups().empty(), false);
    ASSERT_NE(app().monitor().group(notes), nullptr);
    ASSERT_TRUE(goesAway("Quit Notes?"));

    EXPECT_EQ(probe->edges("Quit Notes"), hero);
    probe->clickText("Quit Notes");
    EXPECT_TRUE(comesUp("Quit Notes?"));
    probe->press(Qt::Key_Return);
    pass(0.3);
    EXPECT_TRUE(comesUp("Done"));
    EXPECT_EQ(app().monitor().group(notes), nullptr);
    EXPECT_TRUE(probe->shows("Your Mac is running smoothly."));
    pass(4);
    EXPECT_EQ(app().actions().toast(), std::nullopt);
}

// From the headline to the last button, for every machine that is simulated.
TEST_F(ApplicationTest, TheOverviewShowsWhatWasFoundAndNothingElse) {
    for (const std::string_view scenario : Simulated::scenarioNames()) {
        SCOPED_TRACE(scenario);
        ApplicationRig::launch(scenario);
        open();
        pass(60);
        const DiagnosisResult& result = app().monitor().result();
        std::vector<std::string> expected;
        const auto expect = [&](const std::string& text) {
            if (!text.empty()) {
                expected.push_back(text);
            }
        };
        const auto expectFix = [&](const Finding& finding) {
            const auto group = app().monitor().group(finding.groupID());
            expect(finding.primaryFix() ? title(*finding.primaryFix(), group.get()) : "");
        };
        if (const Finding* const hero = result.hero()) {
            expect(hero->headline());
            expect(hero->detail());
            expectFix(*hero);
            expect(hero->leaveNote().value_or(""));
            expect(moreCausesLabel(result.more().size()).toStdString());
        } else {
            expected = {"Your Mac is running smoothly.",
                        "Nothing is slowing your Mac down right now."};
        }
        for (const Finding& cause : result.more()) {
            expect(cause.headline());
            expectFix(cause);
        }
        const auto texts = probe->texts();
        const auto begin = std::ranges::find(texts, "Pause");
        const auto end = std::find(begin, texts.end(), "CPU load");
        ASSERT_NE(end, texts.end());
        EXPECT_EQ((std::vector<std::string>{begin + 1, end}), expected);
    }
}

TEST_F(ApplicationTest, AnApplicationThatWillNotDieLeadsToARestart) {
    launch();
    mac().machine.lock()->running.front().habit = Simulated::QuitHabit::hangs;
    open();
    app().actions().confirmQuit(*app().monitor().group(notes));
    EXPECT_TRUE(comesUp("Quit Notes?"));
    probe->press(Qt::Key_Return);
    pass(10.1);
    EXPECT_TRUE(comesUp("Notes isn't responding."));
    // Where work could be lost, the key that agrees by habit does no harm.
    probe->press(Qt::Key_Return);
    EXPECT_FALSE(app().actions().confirmation());

    app().actions().confirmQuit(*app().monitor().group(notes));
    app().actions().acceptConfirmation();
    pass(10.1);
    EXPECT_TRUE(comesUp("Force Quit"));
    probe->clickText("Force Quit");
    pass(10.1);
    EXPECT_TRUE(comesUp("Notes won't quit. Restart your Mac to clear it."));
    probe->press(Qt::Key_Return);
    EXPECT_TRUE(comesUp("Restart your Mac?"));
    EXPECT_EQ(app().actions().stuckAlert(), std::nullopt);
}

TEST_F(ApplicationTest, APressThatWasMeantForOneQuestionAnswersNoOther) {
    launch();
    mac().machine.lock()->running.front().habit = Simulated::QuitHabit::hangs;
    open();
    app().actions().confirmQuit(*app().monitor().group(notes));
    app().actions().acceptConfirmation();
    pass(9);
    app().actions().confirmRestart();
    ASSERT_TRUE(comesUp("Restart your Mac?"));
    pass(1.1);
    ASSERT_TRUE(comesUp("Notes isn't responding."));
    EXPECT_EQ(app().window()->activeFocusItem()->property("text"), "Cancel");
    for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
        probe->press(key);
        EXPECT_TRUE(app().actions().confirmation());
    }
    pass(QuestionModel::calm.count());
    probe->press(Qt::Key_Return);
    EXPECT_FALSE(app().actions().confirmation());
    pass(11);
    EXPECT_EQ(app().actions().stuckAlert(), std::nullopt) << "nobody forced it";
}

// Whoever was first, a screen's question stands alone; the fix's comes after it and takes no press
// that was meant for it.
TEST_F(ApplicationTest, WhatAFixAsksWaitsForTheQuestionOfAScreen) {
    launch();
    open(Screen::internet);
    const Table<bool, std::function<void()>> rows = {
        {true, [&] { probe->press(Qt::Key_Escape); }},
        {false, [&] { probe->press(Qt::Key_Return); }},
        {true, [&] { app().router().setScreen(Screen::overview); }},
    };
    for (const auto& [fixIsFirst, end] : rows) {
        app().router().setScreen(Screen::internet);
        settle();
        auto* const root = app().window()->property("model").value<RootModel*>();
        if (fixIsFirst) {
            app().actions().confirmRestart();
            ASSERT_TRUE(comesUp("Restart your Mac?"));
        }
        qobject_cast<InternetModel*>(root->screenModel())->askTest();
        if (!fixIsFirst) {
            app().actions().confirmRestart();
        }
        ASSERT_TRUE(comesUp("Test your internet speed?"));
        pass(QuestionModel::calm.count());
        EXPECT_TRUE(app().actions().confirmation());
        EXPECT_FALSE(probe->shows("Restart your Mac?"));
        end();
        ASSERT_TRUE(comesUp("Restart your Mac?"));
        EXPECT_FALSE(probe->shows("Test your internet speed?"));
        probe->press(Qt::Key_Escape);
        EXPECT_TRUE(app().actions().confirmation());
        pass(QuestionModel::calm.count());
        probe->press(Qt::Key_Escape);
        EXPECT_FALSE(app().actions().confirmation());
        ASSERT_TRUE(goesAway("Restart your Mac?"));
    }
}

TEST_F(ApplicationTest, ASheetThatOpensLaterStaysBehindTheQuestion) {
    launch();
    open();
    app().actions().confirmRestart();
    ASSERT_TRUE(comesUp("Restart your Mac?"));
    app().router().setBrowser(ChromiumBrowser::chrome);
    ASSERT_TRUE(comesUp("Let Pacelet see your Google Chrome tabs"));
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return app().window()->activeFocusItem()->property("text") == "Restart…";
    })) << "a key reaches the question";
    probe->press(Qt::Key_Escape);
    ASSERT_TRUE(goesAway("Restart your Mac?"));
    EXPECT_EQ(app().router().browser(), ChromiumBrowser::chrome);
    probe->press(Qt::Key_Escape);
    EXPECT_EQ(app().router().browser(), std::nullopt);
}

TEST_F(ApplicationTest, ANewFirstFindingIsSaid) {
    launch();
    setLoad("Notes", 390);
    pass(60);
    open();
    pass(30);
    QQuickItem* const news = probe->item("news");
    EXPECT_FALSE(news->isVisible()) << "what stands there is no news";
    setLoad("Notes", 0);
    pass(30);
    EXPECT_FALSE(news->isVisible());
    setLoad("Notes", 390);
    pass(60);
    ASSERT_TRUE(news->isVisible());
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(news);
    EXPECT_EQ(face->role(), QAccessible::AlertMessage);
    EXPECT_TRUE(face->text(QAccessible::Name).startsWith("Notes is using "));
}

TEST_F(ApplicationTest, TheKeyboardLeadsEverywhere) {
    launch();
    open();
    const std::pair<int, Screen> screens[] = {{Qt::Key_3, Screen::backgroundItems},
                                              {Qt::Key_5, Screen::usage},
                                              {Qt::Key_4, Screen::internet},
                                              {Qt::Key_2, Screen::processes},
                                              {Qt::Key_1, Screen::overview}};
    for (const auto& [key, screen] : screens) {
        probe->press(key, Qt::ControlModifier);
        EXPECT_EQ(app().router().screen(), screen);
    }
    probe->press(Qt::Key_F, Qt::ControlModifier);
    probe->press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(app().router().screen(), Screen::processes);
    EXPECT_EQ(app().router().focusSearch(), 2);
    const auto before = samples();
    probe->press(Qt::Key_R, Qt::ControlModifier);
    settle();
    EXPECT_EQ(samples(), before + 1);
    QSignalSpy quit{&app(), &Application::quitRequested};
    probe->press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quit.count(), 1);
    probe->press(Qt::Key_W, Qt::ControlModifier);
    closes(&Application::window);
}

TEST_F(ApplicationTest, LivesOnWithoutItsWindow) {
    launch();
    open();
    app().router().setScreen(Screen::usage);
    app().window()->close();
    closes(&Application::window);
    EXPECT_FALSE(app().monitor().windowVisible());
    EXPECT_TRUE(app().monitor().explanations().empty());
    scheduler().settle();
    const auto before = samples();
    pass(29);
    EXPECT_EQ(samples(), before);
    // Nothing of the window wakes up behind it: there is the loop, and no more.
    EXPECT_EQ(scheduler().pendingSleeps(), 1U);
    open(app().router().screen());
    EXPECT_EQ(samples(), before + 1);
    EXPECT_EQ(app().router().screen(), Screen::usage);
    app().router().setScreen(Screen::overview);
    settle();
    EXPECT_TRUE(probe->shows(app().monitor().groups().front().displayName)) << "at once";
    app().window()->showMinimized();
    EXPECT_FALSE(app().monitor().windowVisible());
    app().showWindow();
    EXPECT_TRUE(app().monitor().windowVisible());
}

TEST_F(ApplicationTest, TellsOnceHowToComeBackWhereNoTrayLeadsThere) {
    session.emplace(std::make_unique<Simulated::SimulatedMac>(smallMac()), smallCatalog(),
                    OperatingSystem::linuxDesktop);
    open();
    ASSERT_FALSE(TrayItem::isAvailable());
    app().closeWindow();
    ASSERT_TRUE(comesUp("Pacelet goes on without its window."));
    probe->press(Qt::Key_Escape);
    ASSERT_TRUE(goesAway("Pacelet goes on without its window."));
    ASSERT_NE(app().window(), nullptr);
    app().closeWindow();
    closes(&Application::window);
}

TEST_F(ApplicationTest, OnASmallScreenEveryButtonIsInReach) {
    launch();
    for (const QSize room : {QSize{1093, 580}, {960, 500}, {1600, 900}}) {
        app().setRoom([room] { return room; });
        open();
        const bool isSmall = room.height() < 700;
        EXPECT_EQ(app().window()->windowStates() == Qt::WindowMaximized, isSmall);
        app().window()->setWindowStates(Qt::WindowNoState);
        app().window()->resize(QSize{1200, 860}.boundedTo(room));
        settle();
        QQuickItem* const pause = probe->item("pause");
        pause->forceActiveFocus(Qt::TabFocusReason);
        const QRectF edges = pause->mapRectToScene(pause->boundingRect());
        EXPECT_TRUE(QRectF(QPointF{}, app().window()->size()).contains(edges)) << room.width();
        app().closeWindow();
        closes(&Application::window);
    }
}

TEST_F(ApplicationTest, ThePanelTellsTheStateAndLeadsToTheWindow) {
    launch();
    setLoad("Notes", 390);
    pass(60);
    const auto before = samples();
    app().openPanel({});
    ASSERT_TRUE(QTest::qWaitForWindowActive(app().panel()));
    EXPECT_EQ(app().panel()->width(), 300);
    probe.emplace(*app().panel());
    settle();
    EXPECT_EQ(samples(), before + 1);
    EXPECT_THAT(probe->texts(), IsSupersetOf({"checked 0s ago", "Notes", "400%", "Quit Notes",
                                              "Open Pacelet", "Start at login", "Quit Pacelet"}));
    probe->click("startAtLogin");
    EXPECT_EQ(mac().loginItems.status(), LoginItemStatus::enabled);

    probe->clickText("Quit Notes");
    closes(&Application::panel);
    EXPECT_FALSE(app().monitor().menuOpen());
    ASSERT_TRUE(QTest::qWaitForWindowActive(app().window()));
    probe.emplace(*app().window());
    settle();
    EXPECT_TRUE(comesUp("Quit Notes?"));
}

TEST_F(ApplicationTest, FollowsTheDesktopsWishes) {
    launch();
    const auto seen = [&] {
        QQmlComponent component{qmlEngine(app().window())};
        component.setData("import QtQml; import Pacelet\nQtObject {\n"
                          "property bool reduced: Theme.reducedMotion\n"
                          "property bool strong: Theme.highContrast }",
                          {});
        const std::unique_ptr<QObject> made{component.create()};
        return DesktopWishes{made->property("reduced").toBool(), made->property("strong").toBool()};
    };
    DesktopWishes wanted;
    followWishes(app(), scheduler(), [&] { return wanted; });
    for (const DesktopWishes next : {DesktopWishes{true, false}, {false, true}, {true, true}}) {
        open();
        EXPECT_EQ(seen(), wanted);
        wanted = next;
        settle();
        EXPECT_NE(seen(), wanted) << "asked once for each time that the window is shown";
        app().closeWindow();
        closes(&Application::window);
    }
}

TEST_F(ApplicationTest, WithoutItsCatalogSaysSoAndDoesNothing) {
    launch(std::nullopt);
    open();
    EXPECT_THAT(probe->texts(),
                Contains("Pacelet couldn't load its process list. Reinstall Pacelet."));
    for (const int key : {Qt::Key_2, Qt::Key_1, Qt::Key_R}) {
        probe->press(key, Qt::ControlModifier);
        pass(60);
    }
    EXPECT_THAT(probe->texts(), Not(Contains("Checking your Mac…")));
    EXPECT_EQ(samples(), 0);
}

TEST_F(ApplicationTest, AFailedLookLeavesThePictureAndSaysSo) {
    launch();
    open();
    mac().machine.inject(Simulated::ToolMissing{"/bin/ps"});
    pass(3.1);
    EXPECT_THAT(probe->texts(), IsSupersetOf({"Couldn't read processes. Retrying.", "Notes"}));
    mac().machine.clearFailures();
    pass(3.1);
    EXPECT_FALSE(probe->shows("Couldn't read processes. Retrying."));
}

} // namespace
} // namespace pacelet::testing
