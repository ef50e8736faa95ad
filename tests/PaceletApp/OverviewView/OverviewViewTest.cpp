#include "tests/PaceletApp/OverviewView/SampleMachine.h"
#include "tests/PaceletApp/Support/Stage.h"

#include <QQmlContext>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace pacelet {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;

/// The overview of a machine on a stage of the main window's size.
struct Shown {
    OverviewModel model;
    Stage stage;

    explicit Shown(const SampleMachine& machine)
        : stage{"OverviewView { objectName: \"overview\"; anchors.fill: parent; model: overview }",
                {{"overview", QVariant::fromValue(&model)}},
                {988, 860}} {
        machine.showOn(model);
    }
};

TEST(OverviewView, changesWithWhatIsKnown) {
    SampleMachine machine{2};
    machine.lastChecked.reset();
    Shown shown{machine};
    EXPECT_THAT(shown.stage.texts(), IsSupersetOf({"Checking your Mac…", "Checking…"}));
    machine.lastChecked = fromUnixTime(100);
    machine.showOn(shown.model);
    EXPECT_THAT(shown.stage.texts(), IsSupersetOf({"Live · checked 2s ago",
                                                   "Nothing is slowing your Mac down right now.",
                                                   "App 0", "50.0%", "Safe to quit"}));
    EXPECT_THAT(shown.stage.texts(), Not(Contains(testing::StartsWith("And "))));

    machine.add(FindingKind::cpuHog, Severity::high, FixID::quitApp, machine.groups[0].id);
    machine.add(FindingKind::spotlight, Severity::low, {}, {}, "Settles by itself");
    machine.showOn(shown.model);
    EXPECT_THAT(shown.stage.texts(), IsSupersetOf({"Cause 0.", "More of it.", "And 1 more cause",
                                                   "Cause 1.", "Settles by itself"}));
    EXPECT_THAT(shown.stage.texts(), Not(Contains("Your Mac is running smoothly.")));
}

TEST(OverviewView, itsButtonsReachTheModel) {
    SampleMachine machine{3};
    machine.add(FindingKind::cpuHog, Severity::high, FixID::quitApp, machine.groups[0].id);
    machine.add(FindingKind::lowDisk, Severity::low, FixID::openTidyvault);
    Shown shown{machine};
    QSignalSpy paused{shown.model.badge(), &LiveBadgeModel::pauseToggled};
    QSignalSpy all{&shown.model, &OverviewModel::allProcessesWanted};
    std::string asked;
    record(shown.model, asked);
    for (const char* const button :
         {"Pause", "All processes", "Quit App 0", "Free up space", "Quit App 2"}) {
        shown.stage.clickText(QString::fromUtf8(button));
    }
    EXPECT_EQ(paused.count() + all.count(), 2);
    EXPECT_EQ(asked, "quitApp /Applications/App 0.app; openTidyvault -; "
                     "quitApp /Applications/App 2.app; ");
}

TEST(OverviewView, columnsOfHeadingAndRowsMeet) {
    Shown shown{SampleMachine{1}};
    Stage& stage = shown.stage;
    EXPECT_EQ(stage.edges("CPU").right(), stage.edges("50.0%").right());
    EXPECT_EQ(stage.edges("Memory").right(), stage.edges("0 KB").right());
    EXPECT_EQ(stage.edges("Process").left(), stage.edges("App 0").left() - 46);
}

TEST(OverviewModel, showsAtMostFourFurtherCausesAndFiveProcesses) {
    for (const std::size_t count : {0U, 1U, 2U, 5U, 7U}) {
        SampleMachine machine{count};
        for (std::size_t finding = 0; finding < count; ++finding) {
            machine.add(FindingKind::cpuHog, Severity::medium);
        }
        OverviewModel model;
        machine.showOn(model);
        EXPECT_EQ(model.hero().hasFinding, count > 0);
        const auto more = static_cast<int>(count == 0 ? 0 : std::min<std::size_t>(count - 1, 4));
        EXPECT_EQ(model.causes()->rowCount(), more);
        EXPECT_EQ(model.moreLabel(), more == 0   ? QString{}
                                     : more == 1 ? QStringLiteral("And 1 more cause")
                                                 : QStringLiteral("And 4 more causes"));
        EXPECT_EQ(model.processes()->rowCount(), std::min<int>(static_cast<int>(count), 5));
    }
}

TEST(OverviewModel, claimsNothingBeforeTheFirstCheckAndTellsOnlyWhatChanged) {
    SampleMachine machine{3};
    machine.add(FindingKind::cpuHog, Severity::high, FixID::quitApp, machine.groups[0].id);
    OverviewModel model;
    const auto checked = std::exchange(machine.lastChecked, {});
    machine.showOn(model);
    EXPECT_EQ(model.hero(), HeroLook{});
    machine.lastChecked = checked;
    machine.showOn(model);
    QSignalSpy hero{&model, &OverviewModel::heroChanged};
    QSignalSpy readings{&model, &OverviewModel::readingsChanged};
    QSignalSpy live{model.badge(), &LiveBadgeModel::textChanged};
    QSignalSpy paused{model.badge(), &LiveBadgeModel::stateChanged};
    QSignalSpy rows{model.processes(), &QAbstractItemModel::dataChanged};
    machine.showOn(model);
    EXPECT_EQ(hero.count() + readings.count() + live.count() + paused.count() + rows.count(), 0);

    machine.groups[1].memoryBytes += 1 << 20;
    machine.signals->cpuLoadPercent = 80;
    machine.showOn(model);
    EXPECT_EQ(rows.count(), 1);
    EXPECT_EQ(readings.count(), 1);
    EXPECT_EQ(hero.count() + live.count() + paused.count(), 0);

    model.badge()->showAge(fromUnixTime(103));
    EXPECT_EQ(model.badge()->text(), "Live · checked 3s ago");
    machine.paused = true;
    machine.showOn(model);
    EXPECT_EQ(paused.count(), 1);
    EXPECT_EQ(model.badge()->text(), "Paused");
    EXPECT_EQ(hero.count(), 0);
}

TEST(OverviewModel, asksForTheFixOfWhatWasPressed) {
    SampleMachine machine{2};
    const std::string app = machine.groups[1].id;
    machine.add(FindingKind::cpuHog, Severity::high, FixID::quitApp, app);
    machine.add(FindingKind::longUptime, Severity::low, FixID::restartMac);
    machine.add(FindingKind::spotlight, Severity::low, {}, {}, "Settles by itself");
    machine.add(FindingKind::memory, Severity::high, FixID::quitApp, "/Applications/Gone.app");
    OverviewModel model;
    machine.showOn(model);
    EXPECT_EQ(model.hero().fix.title, "Quit App 1");
    std::string asked;
    record(model, asked);
    model.fixHero();
    for (const int row : {0, 1, 2, 3, -1}) {
        model.fixCause(row);
    }
    model.fixProcess(QStringLiteral("pid:7"));
    EXPECT_EQ(asked, "quitApp " + app + "; restartMac -; quitApp /Applications/Gone.app; " +
                         "quitApp pid:7; ");
}

} // namespace
} // namespace pacelet
