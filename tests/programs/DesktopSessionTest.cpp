#include "tests/programs/support/DesktopSession.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace pacelet::testing {
namespace {

constexpr std::uint32_t control = 0xFFE3;
constexpr std::uint32_t escape = 0xFF1B;

constexpr std::uint32_t green = 0x6EE7B7;
constexpr std::uint32_t amber = 0xF5B841;
constexpr std::uint32_t red = 0xF87171;
constexpr std::uint32_t ground = 0x111116;    ///< of the main window
constexpr std::uint32_t highlight = 0x2A2144; ///< of the row of the screen on show

class DesktopSessionTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!desktop.isUp()) {
            GTEST_SKIP() << "no desktop to start";
        }
    }

    /// The one window that is `width` wide, once it is there and painted.
    std::optional<SeenWindow> window(int width) const {
        std::optional<SeenWindow> found;
        eventually([&] {
            for (const SeenWindow& seen : desktop.windows()) {
                if (seen.area.width == width) {
                    found = seen;
                }
            }
            return found.has_value();
        });
        return found;
    }
    bool comesTo(std::size_t count) const {
        return eventually([&] { return desktop.windows().size() == count; });
    }
    /// Where the dot shows in this colour, once it does.
    std::optional<Area> dot(std::uint32_t colour) const {
        std::optional<Area> found;
        eventually([&] { return (found = desktop.find(colour, desktop.tray())).has_value(); });
        return found;
    }
    /// This machine may be in any state.
    bool dotIs(bool there) const {
        return eventually([&] {
            return there ==
                   (desktop.find(green, desktop.tray()) || desktop.find(amber, desktop.tray()) ||
                    desktop.find(red, desktop.tray()));
        });
    }
    bool isActive(const SeenWindow& window) const {
        return eventually([&] { return desktop.activeWindow() == window.id; });
    }
    /// Where the highlight stands in the sidebar of the main window.
    std::optional<Area> highlighted(const SeenWindow& main) const {
        return desktop.find(highlight, {main.area.x, main.area.y, 200, main.area.height});
    }

    DesktopSession desktop;
};

TEST_F(DesktopSessionTest, TheWindowComesGoesAndComesBack) {
    ChildProgram pacelet = desktop.start("pacelet");
    const auto main = window(1200);
    ASSERT_TRUE(main);
    EXPECT_EQ(main->title, "Pacelet");
    EXPECT_EQ(main->area.height, 860);
    ASSERT_TRUE(isActive(*main));
    ASSERT_TRUE(eventually([&] { return desktop.find(ground, main->area).has_value(); }));
    EXPECT_TRUE(dotIs(true));

    ASSERT_TRUE(eventually([&] { return highlighted(*main).has_value(); }));
    const int overview = highlighted(*main)->y;
    for (const auto& [key, rows] : {std::pair{'2', 1}, {'5', 4}, {'1', 0}}) {
        desktop.press({control, static_cast<std::uint32_t>(key)});
        EXPECT_TRUE(eventually([&, rows = rows] {
            const auto row = highlighted(*main);
            return row && row->y == overview + rows * 39;
        })) << key;
    }

    // However it is closed, the program lives on, and a second start brings the window back.
    for (const bool byFrame : {true, false}) {
        const auto open = window(1200);
        ASSERT_TRUE(open && isActive(*open));
        byFrame ? desktop.close(open->id) : desktop.press({control, 'w'});
        ASSERT_TRUE(comesTo(0));
        EXPECT_TRUE(dotIs(true));
        EXPECT_TRUE(pacelet.runs());
        ChildProgram second = desktop.start("pacelet");
        EXPECT_EQ(second.end(), 0);
        EXPECT_TRUE(comesTo(1));
    }
    ChildProgram third = desktop.start("pacelet");
    EXPECT_EQ(third.end(), 0);
    const auto open = window(1200);
    ASSERT_TRUE(open && isActive(*open));
    EXPECT_EQ(desktop.windows().size(), 1U);
    EXPECT_TRUE(pacelet.runs());

    desktop.press({control, 'q'});
    EXPECT_EQ(pacelet.end(), 0);
    EXPECT_TRUE(dotIs(false));
}

TEST_F(DesktopSessionTest, ALoginShowsTheDotAloneUntilTheUserAsks) {
    ChildProgram pacelet = desktop.start("pacelet", {"--hidden"});
    ASSERT_TRUE(dotIs(true));
    EXPECT_EQ(desktop.start("pacelet", {"--hidden"}).end(), 0);
    EXPECT_TRUE(desktop.windows().empty());
    const std::string id = "shell/pacelet/7-host_TIME4210";
    EXPECT_EQ(desktop.start("pacelet", {}, {{"DESKTOP_STARTUP_ID", id}}).end(), 0);
    const auto main = window(1200);
    ASSERT_TRUE(main && isActive(*main));
    EXPECT_EQ(desktop.startupID(main->id), id);
    EXPECT_TRUE(pacelet.runs());
}

TEST_F(DesktopSessionTest, TheDotTellsTheStateOfTheMachine) {
    for (const auto& [scenario, colour] :
         {std::pair{"quiet", green}, {"chrome-tabs", amber}, {"out-of-memory", red}}) {
        ChildProgram demo = desktop.start("pacelet-demo", {scenario});
        const auto seen = dot(colour);
        ASSERT_TRUE(seen) << scenario;
        EXPECT_GE(seen->width, 8) << scenario;
        EXPECT_LE(seen->width, DesktopSession::trayHeight / 2) << scenario;
    }
}

TEST_F(DesktopSessionTest, ThePanelOpensByTheDotAndCloses) {
    ChildProgram demo = desktop.start("pacelet-demo", {"chrome-tabs"});
    const auto main = window(1200);
    const auto icon = dot(amber);
    ASSERT_TRUE(main && icon && isActive(*main));
    const auto openPanel = [&] {
        desktop.click(icon->middleX(), icon->middleY());
        auto panel = window(300);
        return panel && isActive(*panel) ? panel : std::nullopt;
    };

    const auto panel = openPanel();
    ASSERT_TRUE(panel);
    EXPECT_TRUE(desktop.hasState(panel->id, "_NET_WM_STATE_SKIP_TASKBAR"));
    EXPECT_FALSE(desktop.hasState(main->id, "_NET_WM_STATE_SKIP_TASKBAR"));
    EXPECT_LT(panel->area.bottom(), desktop.tray().y + 1);
    EXPECT_GT(panel->area.bottom(), desktop.tray().y - 20);
    EXPECT_LE(panel->area.x, icon->x);
    EXPECT_GE(panel->area.right(), icon->right());
    EXPECT_GE(panel->area.x, 0);
    EXPECT_LE(panel->area.right(), DesktopSession::width);
    desktop.press({escape});
    EXPECT_TRUE(comesTo(1));

    ASSERT_TRUE(openPanel());
    desktop.click(main->area.middleX(), main->area.y + 60);
    EXPECT_TRUE(comesTo(1));

    ASSERT_TRUE(openPanel());
    desktop.click(icon->middleX(), icon->middleY());
    EXPECT_TRUE(comesTo(1));
    EXPECT_TRUE(demo.runs());

    // With the main window gone, the panel's lowest button ends the program.
    desktop.close(main->id);
    ASSERT_TRUE(comesTo(0));
    const auto last = openPanel();
    ASSERT_TRUE(last);
    desktop.click(last->area.middleX(), last->area.bottom() - 16 - 14);
    EXPECT_EQ(demo.end(), 0);
}

} // namespace
} // namespace pacelet::testing
