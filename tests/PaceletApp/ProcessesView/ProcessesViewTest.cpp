#include "tests/PaceletApp/Support/ApplicationRig.h"

#include <QAccessible>

#include <algorithm>
#include <string>

namespace pacelet::testing {
namespace {

constexpr double rowHeight = 57;

class ProcessesViewTest : public ApplicationRig {
protected:
    void start(std::string_view scenario, double seconds = 30) {
        launch(scenario);
        open(Screen::processes);
        pass(seconds);
    }

    void expand(std::string_view name) {
        app().router().setExpandedID(groupNamed(name).id);
        settle();
    }

    std::string expanded() { return app().router().expandedID().value_or("none"); }

    double scrolled() { return probe->property("process list", "contentY").toDouble(); }
    void scroll(double y) {
        probe->find("process list")->setProperty("contentY", y);
        settle();
    }

    /// The row of the group of this name.
    QQuickItem* row(const QString& name) {
        for (QQuickItem* item : list()->childItems()) {
            if (item->property("groupId").isValid() && item->property("name") == name) {
                return item;
            }
        }
        return nullptr;
    }
    QQuickItem* list() {
        return probe->property("process list", "contentItem").value<QQuickItem*>();
    }

    /// Where a row stands in the view; far below it when it is not there.
    double placeOf(const QString& name) {
        const QQuickItem* const found = row(name);
        return found != nullptr ? found->y() - scrolled() : 1e9;
    }

    void press(const QString& name) {
        const QPointF head = row(name)->mapToScene({300, rowHeight / 2});
        QTest::mouseClick(app().window(), Qt::LeftButton, {}, head.toPoint());
        settle();
    }
};

TEST_F(ProcessesViewTest, showsTheKernelBeforeThereIsAnyFigure) {
    launch("hot");
    scheduler().setBackgroundDuration(Seconds{5});
    open(Screen::processes);
    EXPECT_THAT(probe->texts(),
                IsSupersetOf({"Processes", "Everything running on your Mac, in plain English.",
                              "Checking…", "All 1", "Leave it 1", "kernel_task",
                              "Kernel (heat control)", "heat ok", "—", "Not cooling right now"}));
    probe->press(Qt::Key_F, Qt::ControlModifier);
    probe->type("mds");
    EXPECT_TRUE(comesUp("No process matches \"mds\"."));
    EXPECT_FALSE(probe->shows("Verdict"));
    probe->press(Qt::Key_Escape);
    pass(30);
    EXPECT_THAT(probe->texts(), IsSupersetOf({"Hot", "Cooling your Mac", "Final Cut Pro"}));
}

TEST_F(ProcessesViewTest, findsFiltersAndSorts) {
    launch("chrome-tabs");
    open();
    pass(30);
    probe->press(Qt::Key_F, Qt::ControlModifier);
    settle();
    EXPECT_EQ(app().router().screen(), Screen::processes);
    EXPECT_EQ(probe->focused(), "search");
    const std::string all = "All " + std::to_string(app().monitor().groups().size() + 1);
    EXPECT_TRUE(probe->shows(all));
    probe->type("renderer");
    EXPECT_THAT(probe->texts(), IsSupersetOf({"Google Chrome", all.c_str()}));
    EXPECT_FALSE(probe->shows("WindowServer"));
    probe->clickText("Review 6");
    EXPECT_TRUE(probe->shows("No process matches \"renderer\"."));
    probe->press(Qt::Key_Escape);
    EXPECT_FALSE(probe->shows("WindowServer"));
    probe->clickText(QString::fromStdString(all));
    EXPECT_TRUE(probe->shows("WindowServer"));

    EXPECT_LT(placeOf("WindowServer"), placeOf("Slack"));
    probe->item("sort")->forceActiveFocus();
    probe->press(Qt::Key_Right);
    EXPECT_GT(placeOf("WindowServer"), placeOf("Slack"));
    EXPECT_LT(placeOf("kernel_task"), placeOf("Google Chrome"));

    // The screen forgets what was asked of it; the keyboard goes to the search again.
    probe->press(Qt::Key_F, Qt::ControlModifier);
    probe->type("zz");
    EXPECT_TRUE(probe->shows("No process matches \"zz\"."));
    open(Screen::usage);
    open(Screen::processes);
    EXPECT_EQ(probe->focused(), "search");
    EXPECT_LT(placeOf("WindowServer"), placeOf("Slack"));
}

TEST_F(ProcessesViewTest, oneRowIsOpenWhateverTheTicksBring) {
    start("chrome-tabs");
    press("WindowServer");
    EXPECT_EQ(expanded(), groupNamed("WindowServer").id);
    EXPECT_TRUE(probe->shows("Read the full guide"));
    const QQuickItem* const panel = probe->item("process detail");
    const double place = placeOf("WindowServer");
    for (int tick = 0; tick < 10; ++tick) {
        pass(3);
        EXPECT_EQ(probe->item("process detail"), panel) << "made anew";
        EXPECT_TRUE(probe->shows("Displays: 1"));
    }
    EXPECT_EQ(placeOf("WindowServer"), place);
    open(Screen::usage);
    pass(10);
    open(Screen::processes);
    settle();
    EXPECT_TRUE(probe->shows("Displays: 1"));
    EXPECT_EQ(placeOf("WindowServer"), 0) << "it comes back with its row at the top";

    scroll(0);
    pass(3);
    EXPECT_EQ(scrolled(), 0) << "and stays where it is scrolled to";
    press("Google Chrome");
    EXPECT_EQ(expanded(), groupNamed("Google Chrome").id);
    EXPECT_FALSE(probe->shows("Displays: 1"));
    press("Google Chrome");
    EXPECT_EQ(expanded(), "none");
    EXPECT_FALSE(probe->shows("Read the full guide"));

    app().router().setExpandedID("kernel_task");
    settle();
    scroll(row("Google Chrome")->y() - 2 * rowHeight);
    press("Google Chrome");
    EXPECT_EQ(placeOf("Google Chrome"), rowHeight) << "as near to the pointer as the list allows";
}

TEST_F(ProcessesViewTest, tellsThoseWhoHearItHowItStands) {
    start("chrome-tabs");
    auto* const head = row("WindowServer")->findChild<QQuickItem*>("row head");
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(head);
    ASSERT_NE(face, nullptr);
    const QString told = face->text(QAccessible::Description);
    EXPECT_TRUE(told.contains("CPU ") && told.contains(", memory ") && told.contains("Verdict: "))
        << told.toStdString();
    EXPECT_TRUE(face->state().expandable && !face->state().expanded);
    face->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_TRUE(face->state().expanded && !face->state().collapsed);
    EXPECT_EQ(expanded(), groupNamed("WindowServer").id);
}

TEST_F(ProcessesViewTest, anExplanationLeadsStraightToTheRow) {
    launch("window-server");
    open();
    pass(60);
    spawn("/usr/libexec/busier", 900);
    pass(9);
    app().actions().perform(FixID::explain, &groupNamed("Spotify"));
    settle();
    EXPECT_TRUE(probe->shows("Read the full guide"));
    const double first = placeOf("Spotify");
    EXPECT_GT(scrolled(), 2 * rowHeight);
    EXPECT_EQ(first, 0);
    // It stays there when it sinks in the order.
    spawn("/usr/libexec/busiest", 990);
    pass(9);
    EXPECT_EQ(placeOf("Spotify"), first);
}

TEST_F(ProcessesViewTest, isWalkedByTheKeyboardAndQuitsFromARow) {
    start("quiet");
    probe->press(Qt::Key_F, Qt::ControlModifier);
    const ProcessGroups groups = app().monitor().groups();
    while (probe->focused() != "row head") {
        probe->press(Qt::Key_Tab);
    }
    probe->press(Qt::Key_Space);
    EXPECT_EQ(expanded(), "kernel_task");
    probe->press(Qt::Key_Down);
    probe->press(Qt::Key_Down);
    probe->press(Qt::Key_Return);
    const std::string second = groups[1].id;
    EXPECT_EQ(expanded(), second);
    spawn("/usr/libexec/busier", 900);
    pass(9);
    probe->press(Qt::Key_Return);
    EXPECT_EQ(expanded(), "none") << "the keyboard kept to its process";
    probe->press(Qt::Key_End);
    settle();
    EXPECT_GT(scrolled(), static_cast<double>(groups.size() - 20) * rowHeight);
    probe->press(Qt::Key_Space);
    EXPECT_GT(placeOf(QString::fromStdString(app().monitor().group(expanded())->displayName)), 0);
    probe->press(Qt::Key_PageUp);
    probe->press(Qt::Key_Home);
    settle();
    EXPECT_EQ(scrolled(), 0);
    probe->press(Qt::Key_F, Qt::ControlModifier);
    probe->type("slack");
    probe->press(Qt::Key_Down);
    probe->press(Qt::Key_Return);
    EXPECT_EQ(expanded(), groupNamed("Slack").id);

    probe->press(Qt::Key_Return);
    probe->clickText("Quit Slack"); // the button of the row
    EXPECT_TRUE(comesUp("Quit Slack?"));
    EXPECT_EQ(expanded(), "none");
    probe->press(Qt::Key_Return);
    pass(3);
    EXPECT_TRUE(goesAway("Quit Slack"));
}

TEST_F(ProcessesViewTest, nothingGoesOnOnceItIsLeftOrHidden) {
    launch("spotlight-stuck");
    open(Screen::backgroundItems);
    pass(30);
    const std::size_t sleeps = scheduler().pendingSleeps();
    expand("mds_stores");
    for (int visit = 0; visit < 3; ++visit) {
        scheduler().setBackgroundDuration(Seconds{2});
        open(Screen::processes);
        EXPECT_EQ(scheduler().pendingJobs(), 1U);
        open(Screen::backgroundItems);
        scheduler().setBackgroundDuration(Seconds{0});
        pass(3);
        EXPECT_EQ(scheduler().pendingSleeps(), sleeps);
        EXPECT_EQ(scheduler().pendingJobs(), 0U);
    }
    open(Screen::processes);
    pass(3);
    EXPECT_EQ(scheduler().pendingSleeps(), 2U) << "the loop and the seconds of the badge";
    app().window()->showMinimized();
    settle();
    EXPECT_EQ(scheduler().pendingSleeps(), 1U);
}

TEST_F(ProcessesViewTest, bearsACrowdAndOddNames) {
    launch("quiet");
    const std::string odd[] = {std::string(300, 'm'), "🦀🔥 日本語", "محرك البحث"};
    for (const std::string& name : odd) {
        spawn("/usr/local/bin/" + name, 990);
    }
    for (int number = 0; number < 2000; ++number) {
        spawn("/usr/local/bin/tool" + std::to_string(number), number % 30);
    }
    open(Screen::processes);
    pass(9);
    EXPECT_THAT(probe->texts(), IsSupersetOf(odd));
    EXPECT_GT(app().monitor().groups().size(), 2000U);
    EXPECT_THAT(probe->texts().size(), ::testing::Lt(150U));
    scroll(1000 * rowHeight);
    const auto before = probe->texts();
    pass(30);
    EXPECT_EQ(scrolled(), 1000 * rowHeight);
    probe->press(Qt::Key_F, Qt::ControlModifier);
    probe->type("tool");
    EXPECT_EQ(scrolled(), 0);
    probe->type("1999");
    EXPECT_TRUE(probe->shows("tool1999"));
    EXPECT_THAT(probe->texts(), Not(Contains("tool1998")));
}

} // namespace
} // namespace pacelet::testing
