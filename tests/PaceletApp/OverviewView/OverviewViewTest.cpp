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

} // namespace
} // namespace pacelet
