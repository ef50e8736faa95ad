#include "Hosts/Simulated/Scenarios/Scenarios.h"
#include "tests/PaceletApp/Support/ApplicationRig.h"

namespace pacelet::testing {
namespace {

constexpr const char* launchctl = "/bin/launchctl";

/// The screen on a Mac with an item of each kind, and with names that know no bounds.
class BackgroundItemsViewTest : public ApplicationRig {
protected:
    static Simulated::World world(const std::string& label = "com.example.tool") {
        Simulated::MacBuilder builder{1};
        Simulated::Scenarios::quiet(builder);
        builder.startsByItself({.folder = Simulated::LaunchFolder::userAgents,
                                .label = label,
                                .program = "/usr/local/bin/tool",
                                .application = {}});
        return builder.finish();
    }

    QQuickItem* list() { return probe->item("backgroundItems"); }
};

TEST_F(BackgroundItemsViewTest, TellsWhoRunsWhatByOwner) {
    launch(world());
    open(Screen::backgroundItems);
    pass(10);
    const std::string heading =
        "Apps can add helpers that run in the background. Here's what each one does.";
    EXPECT_THAT(probe->texts(),
                IsSupersetOf({heading.c_str(), "Added by Slack", "com.tinyspeck.slackmacgap.helper",
                              "Built into Slack", "Runs as system", "Running", "Not running",
                              "Review", "com.example.tool"}));
    EXPECT_LT(probe->edges("Slack").top(), probe->edges("Spotify").top());
    EXPECT_LT(probe->edges("Zoom").top(), probe->edges("Unknown developer").top());
    // The heading stands over the rows, whenever they came.
    EXPECT_EQ(probe->edges(QString::fromStdString(heading)).left(), 247);
}

TEST_F(BackgroundItemsViewTest, LooksAfreshWhenItComesOnShow) {
    launch(world());
    open(Screen::overview);
    pass(6);
    const auto before = calls(launchctl);
    app().router().setScreen(Screen::backgroundItems);
    settle();
    EXPECT_EQ(calls(launchctl), before + 1);
    const std::size_t sleeps = scheduler().pendingSleeps();
    app().router().setScreen(Screen::internet);
    app().router().setScreen(Screen::backgroundItems);
    EXPECT_EQ(scheduler().pendingSleeps(), sleeps);
    settle();
    EXPECT_EQ(calls(launchctl), before + 2);
}

TEST_F(BackgroundItemsViewTest, FollowsTheFiguresOfWhatRuns) {
    launch(world());
    open(Screen::backgroundItems);
    pass(3);
    ASSERT_THAT(probe->texts(), Not(Contains("250% · 300 MB")));
    spawn("/usr/local/bin/tool", 250, 300 << 20);
    pass(70);
    EXPECT_TRUE(comesUp("250% · 300 MB"));
    {
        // Gone, but not yet from the list of items, which is older.
        const auto held = mac().machine.lock();
        held->processes.end(held->processes.find("tool")->pid);
    }
    pass(3.1);
    EXPECT_THAT(probe->texts(), AllOf(Contains("Running"), Not(Contains("250% · 300 MB"))));
}

TEST_F(BackgroundItemsViewTest, SaysThatThereIsNothing) {
    launch("fresh-install");
    open(Screen::backgroundItems);
    pass(3);
    EXPECT_THAT(probe->texts(), IsSupersetOf({"Background Items", "No background items found",
                                              "Nothing is set to run in the background."}));
}

TEST_F(BackgroundItemsViewTest, HoldsLongNamesAndScrollsByKeys) {
    const std::string label = "com.example." + std::string(150, 'm');
    launch(world(label));
    open(Screen::backgroundItems);
    app().window()->resize(1000, 700);
    pass(3);
    EXPECT_LT(probe->edges(QString::fromStdString(label)).right(),
              probe->edges("Runs for all users").left());
    for (int stop = 0; stop < 12 && !list()->hasActiveFocus(); ++stop) {
        probe->press(Qt::Key_Tab);
    }
    const double top = list()->property("contentY").toDouble();
    probe->press(Qt::Key_End);
    const double bottom = list()->property("contentY").toDouble();
    EXPECT_GT(bottom, top);
    probe->press(Qt::Key_PageUp);
    probe->press(Qt::Key_Home);
    EXPECT_EQ(list()->property("contentY").toDouble(), top);
    probe->press(Qt::Key_Down);
    EXPECT_GT(list()->property("contentY").toDouble(), top);
}

} // namespace
} // namespace pacelet::testing
