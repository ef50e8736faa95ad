#include "PaceletApp/RootView/RootModel.h"
#include "PaceletApp/UsageView/UsageModel.h"
#include "tests/PaceletApp/Monitor/MonitorRig.h"
#include "tests/PaceletApp/Support/ApplicationRig.h"

#include <QAccessible>
#include <QSignalSpy>

namespace pacelet::testing {
namespace {

const std::string checkBack = "Pacelet records one line a minute while it runs. Check back soon.";
const std::string off = "Usage history is off. Turn it on in Settings.";

class UsageViewTest : public ApplicationRig {
protected:
    const UsageStore& store() { return app().monitor().usageStore(); }

    std::int64_t minuteNow() {
        return static_cast<std::int64_t>(unixTime(scheduler().now()) / secondsPerMinute);
    }

    /// One record for each of the minutes that end so many before now.
    void remember(std::int64_t minutes, std::int64_t ago = 1, double cpu = 10) {
        for (std::int64_t back = ago + minutes - 1; back >= ago; --back) {
            store().append({.t = minuteNow() - back, .cpu = cpu, .cpuMax = cpu, .n = 20});
        }
    }

    void openUsage() {
        open(Screen::usage);
        app().window()->resize(1200, 1100);
        auto* const root = app().window()->property("model").value<RootModel*>();
        model = root->property("screenModel").value<UsageModel*>();
        ASSERT_NE(model, nullptr);
    }

    /// What the charts say to those who cannot see them.
    std::vector<std::string> chartNames() {
        std::vector<std::string> names;
        collectCharts(*app().window()->contentItem(), names);
        return names;
    }

    static void collectCharts(QQuickItem& item, std::vector<std::string>& names) {
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&item);
        if (item.isVisible() && spoken != nullptr && spoken->role() == QAccessible::Chart) {
            names.push_back(spoken->text(QAccessible::Name).toStdString());
        }
        for (QQuickItem* child : item.childItems()) {
            collectCharts(*child, names);
        }
    }

    std::size_t bars() { return model->cpuChart().bars.size(); }

    UsageModel* model = nullptr;
};

TEST_F(UsageViewTest, AFreshInstallTellsHowFarItIs) {
    launch("fresh-install");
    openUsage();
    pass(1);
    EXPECT_THAT(
        probe->texts(),
        IsSupersetOf({StartsWith("How hard your Mac works"), StartsWith("Mac mini · "),
                      StartsWith("Not enough data yet."), StartsWith("Based on 0 hours"),
                      StartsWith("Normal"), StartsWith("Swap: 0 KB"), StartsWith("Compressed 0 KB"),
                      StartsWith("30 days"), StartsWith("100%")}));
    EXPECT_TRUE(probe->shows(checkBack));
    EXPECT_EQ(model->loadCurve().points.size(), 1U);
    pass(125);
    EXPECT_FALSE(probe->shows(checkBack));
    EXPECT_TRUE(probe->shows("Average CPU load"));
    EXPECT_GT(model->loadCurve().points.size(), 30U);
}

TEST_F(UsageViewTest, TheAdviceFollowsTheMachineAndNeedsNoFurtherHistory) {
    Simulated::World world = smallMac();
    world.vitals.diskFree = world.hardware.diskBytes / 10;
    launch(std::move(world), smallCatalog());
    remember(1500);
    app().monitor().setKeepHistory(false);
    openUsage();
    pass(1);
    EXPECT_THAT(probe->texts(),
                IsSupersetOf({StartsWith("Your disk is nearly full."), StartsWith(off)}));
    EXPECT_THAT(probe->texts(), Not(Contains(StartsWith("Memory is holding"))));
    EXPECT_FALSE(probe->shows("Swap"));
    probe->clickText("Free up space");
    pass(1);
    EXPECT_FALSE(openedURLs().empty());
    // Space was made: the advice follows with the next look at the machine.
    {
        const auto machine = mac().machine.lock();
        machine->vitals.diskFree = machine->hardware.diskBytes / 2;
    }
    pass(3);
    EXPECT_THAT(probe->texts(), Contains(StartsWith("Your Mac has headroom.")));
    EXPECT_FALSE(probe->shows("Free up space"));
    app().monitor().setKeepHistory(true);
    settle();
    EXPECT_TRUE(probe->shows("Swap"));
    EXPECT_FALSE(probe->shows(off));
}

TEST_F(UsageViewTest, TheWeekOfTheAdviceEndsNow) {
    launch(smallMac(), smallCatalog());
    remember(1500);
    // Ten years ahead: a run with a wrong clock.
    remember(1500, -3650 * minutesPerDay, 99);
    open();
    pass(3);
    openUsage(); // what is known stands there at once
    EXPECT_THAT(probe->texts(),
                IsSupersetOf({StartsWith("Your Mac has headroom."), StartsWith("Based on 25 hours"),
                              StartsWith("Pressure: ")}));
    EXPECT_FALSE(model->loadCurve().points.empty());
}

TEST_F(UsageViewTest, AnOldMacIsToldOfAllThatHoldsItBack) {
    launch("intel-history");
    openUsage();
    pass(1);
    EXPECT_THAT(probe->texts(), IsSupersetOf({StartsWith("Memory is holding your Mac back."),
                                              StartsWith("This is an Intel Mac.")}));
}

TEST_F(UsageViewTest, WithoutAReadingTheCardsStayEmpty) {
    launch(smallMac(), smallCatalog());
    mac().machine.inject(Simulated::ToolMissing{"/bin/ps"});
    openUsage();
    pass(10);
    EXPECT_THAT(probe->texts(), IsSupersetOf({"Memory right now", "0%"}));
    EXPECT_THAT(probe->texts(), Not(Contains("Pressure: ")));
    EXPECT_FALSE(app().monitor().memory());
    mac().machine.clearFailures();
    pass(3);
    EXPECT_TRUE(probe->shows("Pressure: "));
}

TEST_F(UsageViewTest, AnotherRangeIsLoadedAtOnceAndTheOldOneDropped) {
    launch(smallMac(), smallCatalog());
    remember(3000);
    openUsage();
    pass(1);
    EXPECT_EQ(bars(), 25U);
    scheduler().setBackgroundDuration(Seconds{2});
    QSignalSpy charts{model, &UsageModel::chartsChanged};
    probe->clickText("7 days");
    pass(1);
    probe->clickText("30 days");
    EXPECT_EQ(model->range(), 2);
    pass(1.5); // what was under way for seven days has come, and is dropped
    EXPECT_EQ(charts.count(), 0);
    EXPECT_EQ(bars(), 25U);
    pass(1);
    EXPECT_EQ(charts.count(), 1);
    EXPECT_LT(bars(), 5U);
    // The same range again starts nothing.
    const auto jobs = scheduler().pendingJobs();
    probe->clickText("30 days");
    EXPECT_EQ(scheduler().pendingJobs(), jobs);
}

TEST_F(UsageViewTest, ReadsTheFilesAgainEveryMinute) {
    launch(smallMac(), smallCatalog());
    app().monitor().setKeepHistory(false); // so that no one else writes
    remember(60, 120);
    openUsage();
    pass(0);
    const auto before = bars();
    remember(1, 61);
    pass(59);
    EXPECT_EQ(bars(), before);
    pass(1.5);
    EXPECT_EQ(bars(), before + 1);
    pass(30);
    remember(1, 600);
    probe->clickText("7 days");
    probe->clickText("24 hours");
    settle();
    EXPECT_EQ(bars(), before + 2);
    // The minute counts from there.
    remember(1, 900);
    pass(58);
    EXPECT_EQ(bars(), before + 2);
    pass(3);
    EXPECT_EQ(bars(), before + 3);
}

TEST_F(UsageViewTest, RestsWhileNobodyLooksAndEndsWithTheScreen) {
    launch(smallMac(), smallCatalog());
    remember(30);
    openUsage();
    pass(1);
    const auto before = bars();
    app().window()->showMinimized();
    pass(1);
    EXPECT_EQ(scheduler().pendingSleeps(), 1U); // the monitor's own
    remember(120, 100);
    pass(600);
    EXPECT_EQ(bars(), before);
    app().showWindow();
    settle();
    EXPECT_GT(bars(), before);

    scheduler().setBackgroundDuration(Seconds{5});
    probe->clickText("7 days");
    const QPointer<UsageModel> left{model};
    probe->clickText("Background Items");
    settle();
    EXPECT_FALSE(left);
    pass(30);
    app().window()->showMinimized();
    pass(20);
    EXPECT_EQ(scheduler().pendingSleeps(), 1U);
    EXPECT_EQ(scheduler().pendingJobs(), 0U);
}

TEST_F(UsageViewTest, TheCausesFollowTheRangeAndTheBars) {
    launch(smallMac(), smallCatalog());
    remember(60);
    remember(60, 181);
    const auto note = [&](std::int64_t ago, const Cause& cause) {
        app().monitor().causeStore().append(
            {minuteNow() - ago, {{cause, Severity::medium, 60, 90, 99}}});
    };
    const std::string nothing = "Pacelet noted nothing that slowed your Mac in the last 24 hours.";
    openUsage();
    pass(1);
    EXPECT_TRUE(probe->shows(nothing));
    for (const std::int64_t ago : {200, 199, 10}) {
        note(ago, {FindingKind::cpuHog, "/Applications/Notes.app", "Notes"});
    }
    note(190, {FindingKind::spotlight, "", ""});
    note(3000, {FindingKind::cpuHog, "", "gone"});
    pass(60);
    EXPECT_THAT(probe->texts(), IsSupersetOf({"Notes", "3 min", "2 times", "Spotlight", "once"}));
    EXPECT_FALSE(probe->shows(nothing) || probe->shows("gone"));

    CausesModel& causes = *model->causes();
    int told = 0;
    for (int bar = 0; bar < static_cast<int>(bars()); ++bar) {
        causes.point(bar);
        told += probe->shows("Notes") ? 1 : 0;
        EXPECT_FALSE(probe->shows("3 min"));
    }
    EXPECT_GE(told, 2);
    causes.choose(0);
    causes.point(-1);
    EXPECT_EQ(causes.stretch(), model->cpuChart().bars[0].time);
    EXPECT_GT(causes.to(), causes.from());
    pass(60);
    EXPECT_EQ(causes.chosen(), 0) << "read anew, it stays";
    causes.choose(0);
    EXPECT_EQ(causes.stretch(), QString{});

    app().window()->resize(1200, 1800);
    probe->clickText("7 days");
    pass(1);
    EXPECT_TRUE(probe->shows("gone"));
    probe->clickText("Notes");
    EXPECT_EQ(app().router().screen(), Screen::processes);
    EXPECT_EQ(app().router().expandedID(), "/Applications/Notes.app");
}

TEST_F(UsageViewTest, EveryBarTellsItsValueAndTime) {
    launch(smallMac(), smallCatalog());
    remember(60, 1, 30);
    remember(60, 181, 90);
    openUsage();
    pass(1);
    QQuickItem* plot = probe->item("Average CPU load");
    const auto hoverBar = [&](const ChartBar& bar) {
        const double middle = (bar.left + bar.right) / 2 * plot->width();
        QTest::mouseMove(app().window(), plot->mapToScene({middle, 5}).toPoint());
        settle();
    };
    for (const ChartBar& bar : model->cpuChart().bars) {
        hoverBar(bar);
        EXPECT_THAT(probe->texts(),
                    IsSupersetOf({bar.value.toStdString(), bar.time.toStdString()}));
    }
    EXPECT_THAT(chartNames(), ElementsAre("CPU load over the last 10 minutes, now 5 percent",
                                          StartsWith("Memory used "), "Average CPU load",
                                          "Time under memory pressure", "Swap"));
    const std::string last = model->cpuChart().bars.back().time.toStdString();
    QTest::mouseMove(app().window(), {5, 5});
    settle();
    EXPECT_THAT(probe->texts(), Not(Contains(last)));

    for (int tries = 0; tries < 30 && !plot->parentItem()->parentItem()->hasActiveFocus();
         ++tries) {
        probe->press(Qt::Key_Tab);
    }
    probe->press(Qt::Key_Left);
    EXPECT_THAT(probe->texts(), Contains(last));
    probe->press(Qt::Key_Tab);
    EXPECT_THAT(probe->texts(), Not(Contains(last)));
}

} // namespace
} // namespace pacelet::testing
