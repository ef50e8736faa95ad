#include "Core/Fixes/FixRunner.h"
#include "tests/Support/FakeToolRunner.h"
#include "tests/Support/FakeWorkspace.h"
#include "tests/Support/Table.h"

#include <gmock/gmock.h>
#include <ostream>

namespace pacelet {

void PrintTo(const FixOutcome& outcome, std::ostream* stream) {
    *stream << outcome.description();
}

namespace {

using ::testing::ElementsAre;

constexpr std::uint32_t me = 501;
const std::string safari = "/Applications/Safari.app";

ProcessGroup groupOf(std::optional<std::string> appPath, std::uint32_t uid = me) {
    ProcessGroup group;
    group.appPath = std::move(appPath);
    ProcessUsage& primary = group.members.emplace_back();
    primary.uid = uid;
    primary.name = "Safari";
    primary.path = group.appPath.value_or("/opt/lone") + "/Contents/MacOS/Safari";
    return group;
}

struct FixRunnerTest : ::testing::Test {
    testing::FakeWorkspace workspace;
    testing::FakeToolRunner tools;
    FixRunner runner{workspace, tools, me};

    /// What the attempt says at once.
    FixOutcome quit(const ProcessGroup& group) {
        return runner.quit(group, false, Seconds{0}).poll(MonotonicTime{}).value();
    }
};

} // namespace

TEST(FixOutcome, ReadsTheErrorNumberOfAScript) {
    for (const auto& [status, text, outcome] : testing::rows<3>("Fixes", "ends of a script")) {
        EXPECT_EQ(FixRunner::outcome(std::stoi(status), text).description(), outcome) << text;
    }
    EXPECT_EQ(FixOutcome::stillRunning().description(), "stillRunning");
}

TEST_F(FixRunnerTest, QuitsEveryCopyAndWaitsForAll) {
    testing::FakeApplication& first = workspace.launch(safari, "Safari");
    testing::FakeApplication& second = workspace.launch(safari, "Safari");
    testing::FakeApplication& other = workspace.launch("/Applications/Mail.app", "Mail");
    workspace.applications.push_back(
        std::make_shared<testing::FakeApplication>()); // without a bundle
    for (const bool force : {false, true}) {
        const MonotonicTime start{Seconds{1000}};
        first.terminated = second.terminated = false;
        QuitAttempt attempt = runner.quit(groupOf(safari), force, Seconds{1});
        EXPECT_EQ(attempt.poll(start), std::nullopt);
        first.terminated = true;
        EXPECT_EQ(attempt.poll(start + Seconds{0.25}), std::nullopt);
        second.terminated = true;
        EXPECT_EQ(attempt.poll(start + Seconds{0.5}), FixOutcome::done());
        second.terminated = false;
        EXPECT_EQ(attempt.poll(start + Seconds{2}), FixOutcome::done()) << "an outcome stays";
    }
    for (const testing::FakeApplication* copy : {&first, &second}) {
        EXPECT_EQ(copy->terminateCalls, 1);
        EXPECT_EQ(copy->forceTerminateCalls, 1);
    }
    EXPECT_EQ(other.terminateCalls + other.forceTerminateCalls, 0);
}

TEST_F(FixRunnerTest, TakesOneLastLookAtTheDeadline) {
    testing::FakeApplication& app = workspace.launch(safari, "Safari");
    EXPECT_EQ(quit(groupOf(safari)), FixOutcome::stillRunning()) << "no time, but one look";
    const MonotonicTime start{Seconds{5}};
    const auto attemptThatWaits = [&] {
        app.terminated = false;
        QuitAttempt attempt = runner.quit(groupOf(safari), false, Seconds{0.25});
        EXPECT_EQ(attempt.poll(start), std::nullopt);
        return attempt;
    };
    QuitAttempt late = attemptThatWaits();
    EXPECT_EQ(late.poll(start + QuitAttempt::pollInterval), FixOutcome::stillRunning());
    app.terminated = true;
    EXPECT_EQ(late.poll(start + Seconds{9}), FixOutcome::stillRunning()) << "the wait is over";
    QuitAttempt justInTime = attemptThatWaits();
    app.terminated = true;
    EXPECT_EQ(justInTime.poll(start + Seconds{0.25}), FixOutcome::done());
    EXPECT_EQ(attemptThatWaits().finish(), FixOutcome::stillRunning()) << "cut off";
}

TEST_F(FixRunnerTest, ActsOnNothingThatIsNotRunning) {
    workspace.launch("/Applications/Safari.app.bak", "Safari");
    EXPECT_EQ(quit(groupOf(safari)), FixOutcome::alreadyGone());
    workspace.applications.front()->bundle = std::nullopt;
    EXPECT_EQ(quit(groupOf(std::nullopt)), FixOutcome::alreadyGone());
}

TEST_F(FixRunnerTest, AsksTheGateForAllBeforeItTouchesOne) {
    const std::function<void(testing::FakeApplication&)> faults[] = {
        [](testing::FakeApplication& app) { app.policy = ActivationPolicy::prohibited; },
        [](testing::FakeApplication& app) { app.executable = "/System/Library/Safari"; },
        [](testing::FakeApplication& app) { app.executable = "/Applications/Finder"; },
    };
    for (const auto& breakSecond : faults) {
        workspace.applications.clear();
        testing::FakeApplication& passes = workspace.launch(safari, "Safari");
        breakSecond(workspace.launch(safari, "Safari"));
        EXPECT_EQ(quit(groupOf(safari)), FixOutcome::refused());
        EXPECT_EQ(passes.terminateCalls, 0);
    }
    workspace.applications.resize(1);
    EXPECT_EQ(quit(groupOf(safari, 0)), FixOutcome::refused()) << "another user's";
    testing::FakeApplication& app = *workspace.applications.front();
    app.executable = std::nullopt;
    app.policy = ActivationPolicy::accessory;
    EXPECT_EQ(quit(groupOf(safari)), FixOutcome::stillRunning()) << "nothing speaks against it";
    EXPECT_EQ(app.terminateCalls, 1);
}

TEST_F(FixRunnerTest, OpensTheBestThatIsInstalled) {
    const FixRunner opener{workspace, tools, me, {"first.tool", "second.tool"}};
    opener.openTidyvault("https://a.example/");
    EXPECT_EQ(workspace.opened, "https://a.example/?ref=pacelet");
    for (const std::string better : {"second.tool", "first.tool", "app.tidyvault.Tidyvault"}) {
        workspace.installed.insert(better);
        opener.openTidyvault("https://a.example/");
        EXPECT_EQ(workspace.opened, "/" + better);
    }
}

TEST_F(FixRunnerTest, RunsTheSystemsScripts) {
    tools.answer = [](const testing::FakeToolRunner::Call&) {
        return Shell::Output{1, "", "error: User canceled. (-128)\n"};
    };
    EXPECT_EQ(runner.rebuildSpotlightIndex(), FixOutcome::cancelled());
    tools.failToLaunch();
    EXPECT_EQ(runner.restartMac(), FixOutcome::failed("osascript"));
    using Call = testing::FakeToolRunner::Call;
    EXPECT_THAT(
        tools.calls,
        ElementsAre(
            Call{"/usr/bin/osascript",
                 {"-e", R"(do shell script "/usr/bin/mdutil -E /" with administrator privileges)"}},
            Call{"/usr/bin/osascript",
                 {"-e", "tell application \"loginwindow\" to \u00ABevent aevtrrst\u00BB"}}));
}

} // namespace pacelet
