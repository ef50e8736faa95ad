#include "Hosts/Simulated/Scenarios/Scenarios.h"
#include "PaceletApp/BackgroundItemsView/BackgroundRow.h"
#include "tests/PaceletApp/Support/ApplicationRig.h"
#include "tests/PaceletApp/Support/SampleGroup.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QCollator>

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
    scheduler().setBackgroundDuration(Seconds{2});
    open(Screen::backgroundItems);
    EXPECT_FALSE(probe->shows("No background items found")) << "before anybody has looked";
    pass(6);
    EXPECT_THAT(probe->texts(), IsSupersetOf({"Background Items", "No background items found",
                                              "Nothing is set to run in the background."}));
}

TEST_F(BackgroundItemsViewTest, KeepsWhatItShowsWhileTheWindowIsAway) {
    launch(world());
    open(Screen::backgroundItems);
    pass(3);
    scheduler().setBackgroundDuration(Seconds{2});
    app().window()->showMinimized();
    pass(1);
    app().showWindow();
    settle();
    EXPECT_THAT(probe->texts(),
                AllOf(Contains("Added by Slack"), Not(Contains("No background items found"))));
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

BackgroundItem item(std::string label, std::optional<std::string> owner,
                    std::optional<std::int32_t> pid = {}, ItemScope scope = ItemScope::userAgent) {
    BackgroundItem made;
    made.label = std::move(label);
    made.source = "/Library/" + made.label;
    made.ownerApp = std::move(owner);
    made.pid = pid;
    made.scope = scope;
    return made;
}

bool byName(const std::string& left, const std::string& right) {
    QCollator collator{QLocale{QLocale::German, QLocale::Germany}};
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator.compare(QString::fromStdString(left), QString::fromStdString(right)) < 0;
}

TEST(ItemGroups, goByTheNamesOfOwnersTheUnknownLast) {
    std::vector<BackgroundItem> items{
        item("z", {}),      item("b", "mail"),        item("a", "Zoom"),
        item("B", "Mail"),  item("b.2", "Älter"),     item("C", "mail"),
        item("a", "Alpha"), item("a", "Unknown app"), item("a", "Zoom")};
    items.back().source = "another folder"; // items of one label stand as they came
    std::string shown;
    for (const ItemGroup& group : grouped(items, byName)) {
        shown += group.name + ":";
        for (const BackgroundItem* const each : group.items) {
            shown += " " + each->label + (each == &items.back() ? "'" : "");
        }
        shown += "; ";
    }
    EXPECT_EQ(shown, "Alpha: a; Älter: b.2; Mail: B; mail: C b; Unknown app: a; Zoom: a a'; "
                     "Unknown developer: z; ");
    EXPECT_TRUE(grouped({}, byName).empty());
}

TEST(BackgroundRows, tellWhatIsKnown) {
    const ProcessUsage usage = sampleUsage(7, "", 12.5, 300 << 20);
    Explanation explanation;
    explanation.title = "Keeps Notes in step";
    explanation.verdict = Verdict::review;
    using Scope = ItemScope;
    const char* const known = "Keeps Notes in step";
    const Table<BackgroundItem, bool, bool, std::string> rows = {
        {item("a.b", "Notes", 7), true, true, "|a.b|Runs for you|running|13% · 300 MB|review"},
        {item("a.b", "Notes", 7, Scope::systemAgent), true, false,
         "|a.b|Runs for all users|running||review"},
        {item("a.b", {}, {}, Scope::systemDaemon), false, true, "|a.b|Runs as system|||"},
        {item("a.b", "Notes", {}, Scope::appBundled), true, true, "|a.b|Built into Notes|||review"},
        {item("a.b", {}, {}, Scope::appBundled), false, false, "|a.b|Built into an app|||"},
    };
    for (const auto& each : rows) {
        const auto& [given, explained, measured, words] = each;
        BackgroundFacts facts;
        facts.explanation = [&, is = explained](const BackgroundItem&) {
            return is ? std::optional{explanation} : std::nullopt;
        };
        facts.usage = [&, is = measured](std::int32_t pid) {
            EXPECT_EQ(pid, 7);
            return is ? std::make_shared<const ProcessUsage>(usage) : nullptr;
        };
        const std::vector<BackgroundItem> items{given};
        const auto shown = backgroundRows(grouped(items, byName), facts);
        ASSERT_EQ(shown.size(), 2U);
        EXPECT_EQ(shown[0].title.toStdString(), given.ownerApp.value_or("Unknown developer"));
        EXPECT_EQ(shown[0].appPath, given.ownerApp ? "/Applications/Notes.app" : "");
        EXPECT_EQ(shown[0].subtitle, "1");
        EXPECT_TRUE(shown[0].isHead && !shown[1].isHead && shown[1].isFirst && shown[1].isLast);
        const QStringList texts{shown[1].title,   shown[1].subtitle,
                                shown[1].scope,   shown[1].isRunning ? "running" : "",
                                shown[1].figures, shown[1].verdict};
        EXPECT_EQ(texts.join(u'|').toStdString(), (explained ? known : "a.b") + words);
    }
}

} // namespace
} // namespace pacelet::testing
