#pragma once

#include "tests/PaceletApp/Support/Matchers.h"
#include "tests/PaceletApp/Support/WindowProbe.h"
#include "tools/session/Session.h"

#include <QTest>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pacelet::testing {

/// The whole program on a simulated Mac, with its real QML and a user in front of it.
class ApplicationRig : public ::testing::Test {
protected:
    void launch(std::string_view scenario) { session.emplace(scenario); }
    void launch(Simulated::World world,
                const std::optional<ProcessCatalog>& catalog = Session::bundledCatalog()) {
        session.emplace(std::make_unique<Simulated::SimulatedMac>(std::move(world)), catalog);
    }

    /// Opens the main window on a screen; `probe` looks at it from then on.
    void open(Screen screen = Screen::overview) {
        session->open(screen);
        ASSERT_TRUE(QTest::qWaitForWindowActive(app().window()));
        probe.emplace(*app().window());
        settle();
    }

    void pass(double seconds) { session->pass(seconds); }
    void settle() { session->pass(0); }

    Application& app() { return session->application(); }
    Simulated::SimulatedMac& mac() { return session->mac(); }
    VirtualScheduler& scheduler() { return session->scheduler(); }

    /// How often a tool has been run.
    std::int64_t calls(std::string_view tool) {
        return mac().machine.lock()->records.toolCalls[std::string{tool}];
    }

    std::vector<std::string> openedURLs() { return mac().machine.lock()->records.openedURLs; }

    /// A program of the user's that works this hard.
    void spawn(const std::string& path, double percent, std::int64_t footprint = 1 << 20) {
        const auto world = mac().machine.lock();
        Simulated::Process process;
        process.user = Simulated::ann;
        process.path = path;
        process.load.percent = percent;
        process.footprint = footprint;
        world->processes.spawn(process);
    }

    const ProcessGroup& groupNamed(std::string_view name) {
        const auto& groups = app().monitor().groups();
        const auto found = std::ranges::find(groups, name, &ProcessGroup::displayName);
        EXPECT_NE(found, groups.end()) << name;
        return *found;
    }

    /// Waits until this is on screen.
    ::testing::AssertionResult comesUp(const std::string& text) {
        const bool came = QTest::qWaitFor(
            [&] {
                settle();
                return probe->shows(text);
            },
            patience);
        return came ? ::testing::AssertionSuccess()
                    : ::testing::AssertionFailure() << "not on screen: " << text;
    }

    /// Waits until this is no longer on screen.
    ::testing::AssertionResult goesAway(const std::string& text) {
        const bool went = QTest::qWaitFor([&] { return !probe->shows(text); }, patience);
        return went ? ::testing::AssertionSuccess()
                    : ::testing::AssertionFailure() << "still on screen: " << text;
    }

    /// Waits until a window has gone.
    void closes(QQuickWindow* (Application::*which)()) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return (app().*which)() == nullptr; }, patience));
        settle();
    }

    static constexpr int patience = 3000; ///< in milliseconds

    std::optional<Session> session;
    std::optional<WindowProbe> probe;
};

} // namespace pacelet::testing
