#pragma once

#include "Hosts/Linux/X11/Connection.h"
#include "tests/Support/ChildProgram.h"
#include "tests/Support/PrivateDisplay.h"
#include "tests/Support/TemporaryFolder.h"

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::testing {

/// A part of the screen, in pixels.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    int middleX() const { return x + width / 2; }
    int middleY() const { return y + height / 2; }

    bool operator==(const Area&) const = default;
};

/// A window of the program under test, as the window manager knows it.
struct SeenWindow {
    xcb_window_t id = XCB_WINDOW_NONE;
    std::string title;
    std::string windowClass;
    Area area; ///< without the window manager's frame
};

/// The desktop of a user who has a window manager with a tray and no message bus: 1600 by 1000
/// pixels, the tray along the lower edge. It sees pixels, moves the pointer and types.
class DesktopSession {
public:
    DesktopSession();

    /// False where the display server or the window manager is not installed.
    bool isUp() const { return isUp_; }

    static constexpr int width = 1600;
    static constexpr int height = 1000;
    static constexpr int trayHeight = 30;

    /// The user's own folder, with the preferences of somebody who knows the program.
    const TemporaryFolder& home() const { return home_; }

    /// Starts one of the programs that were built, or any other by its path; `more` is added to its
    /// environment.
    ChildProgram start(const std::string& program, std::vector<std::string> arguments = {},
                       const Environment& more = {}) const;

    /// The windows of the program, in the order in which they came.
    std::vector<SeenWindow> windows() const;

    /// Those of all programs.
    std::vector<SeenWindow> allWindows() const;

    /// Whether the window has this state, such as "_NET_WM_STATE_SKIP_TASKBAR".
    bool hasState(xcb_window_t window, const std::string& state) const;

    /// The start that the window says it came from.
    std::string startupID(xcb_window_t window) const;

    /// The window that has the keyboard.
    xcb_window_t activeWindow() const;

    /// Where the pixels of exactly this colour (0xRRGGBB) stand within `area`.
    std::optional<Area> find(std::uint32_t colour, const Area& area) const;

    /// How many colours stand within `area`.
    std::size_t colours(const Area& area) const;
    static constexpr Area tray() { return {0, height - trayHeight, width, trayHeight}; }

    void point(int x, int y) const;
    void click(int x, int y) const;
    /// Presses keys by their X symbols, in order, and lets go of them.
    void press(std::initializer_list<std::uint32_t> symbols) const;
    /// Presses the button of a window's frame that closes it.
    void close(xcb_window_t window) const;

private:
    Environment environment() const;
    std::vector<std::uint32_t> pixels(const Area& area) const;
    xcb_keycode_t keyOf(std::uint32_t symbol) const;
    void send(std::uint8_t type, std::uint8_t detail, int x = 0, int y = 0) const;

    TemporaryFolder home_;
    PrivateDisplay display_;
    Linux::X11::Connection connection_;
    std::optional<ChildProgram> manager_;
    bool isUp_ = false;
};

} // namespace pacelet::testing
