#pragma once

#include "tests/PaceletApp/Support/WindowProbe.h"
#include "tools/session/Session.h"

#include <QTest>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace pacelet::testing {

/// The whole program on a simulated Mac, with its real QML and a user in front of it.
class ApplicationRig : public ::testing::Test {
protected:
    void launch(std::string_view scenario) { session.emplace(scenario); }
    void launch(Simulated::World world,
                std::optional<ProcessCatalog> catalog = Session::bundledCatalog()) {
        session.emplace(std::make_unique<Simulated::SimulatedMac>(std::move(world)),
                        std::move(catalog));
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
