#include "Core/Inspectors/WindowCensus.h"
#include "Hosts/Linux/LinuxHost.h"
#include "Hosts/Linux/X11/WindowList.h"
#include "Hosts/Linux/X11/XWindowServer.h"
#include "tests/Support/PrivateDisplay.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace pacelet::Linux::X11 {
namespace {

class WindowServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (server.name().empty()) {
            GTEST_SKIP() << "no display server to start";
        }
    }

    static xcb_atom_t atom(xcb_connection_t* client, std::string_view name) {
        const auto cookie =
            xcb_intern_atom(client, 0, static_cast<std::uint16_t>(name.size()), name.data());
        return replyTo(client, cookie, xcb_intern_atom_reply)->atom;
    }
    static void setNumbers(const Connection& client, xcb_window_t window, std::string_view name,
                           xcb_atom_t type, const std::vector<std::uint32_t>& numbers) {
        xcb_change_property(client.get(), XCB_PROP_MODE_REPLACE, window, atom(client.get(), name),
                            type, 32, static_cast<std::uint32_t>(numbers.size()), numbers.data());
    }
    static void setText(const Connection& client, xcb_window_t window, xcb_atom_t property,
                        std::string_view text) {
        xcb_change_property(client.get(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING,
                            8, static_cast<std::uint32_t>(text.size()), text.data());
    }
    static xcb_window_t open(const Connection& client, std::uint32_t pid) {
        const xcb_window_t window = xcb_generate_id(client.get());
        xcb_create_window(client.get(), XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 100, 100,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        if (pid != 0) {
            setNumbers(client, window, "_NET_WM_PID", XCB_ATOM_CARDINAL, {pid});
        }
        setText(client, window, XCB_ATOM_WM_CLASS, std::string_view{"inner\0Outer\0", 12});
        xcb_map_window(client.get(), window);
        client.synchronize();
        return window;
    }

    testing::PrivateDisplay server{"1280x800x24"};
    XWindowServer windows{server.name(), [] {
                              return std::unordered_map<std::int32_t, std::string>{{41, "Draw"}};
                          }};
};

TEST_F(WindowServerTest, CountsTheWindowsOfApplications) {
    EXPECT_EQ(WindowCensus::live(windows), std::vector<WindowCount>{});
    const Connection client{server.name()};
    ASSERT_TRUE(client);
    open(client, 41);
    open(client, 41);
    open(client, 42);
    open(client, 0);
    const xcb_window_t dock = open(client, 41);
    setNumbers(client, dock, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
               {atom(client.get(), "_NET_WM_WINDOW_TYPE_DOCK")});
    const xcb_window_t minimized = open(client, 41);
    setNumbers(client, minimized, "_NET_WM_STATE", XCB_ATOM_ATOM,
               {atom(client.get(), "_NET_WM_STATE_HIDDEN")});
    const xcb_window_t elsewhere = open(client, 43);
    setText(client, elsewhere, XCB_ATOM_WM_CLIENT_MACHINE, "another.machine.example");
    const xcb_window_t damaged = open(client, 0);
    setText(client, damaged, atom(client.get(), "_NET_WM_PID"), "no number");
    xcb_unmap_window(client.get(), open(client, 44));
    client.synchronize();
    EXPECT_EQ(WindowCensus::live(windows),
              (std::vector<WindowCount>{{"Draw", 41, 2}, {"Outer", 42, 1}}));

    // With a window manager its list counts, and the desktop that it shows.
    const xcb_window_t hidden = open(client, 42);
    setNumbers(client, hidden, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, {1});
    const xcb_window_t sticky = open(client, 42);
    setNumbers(client, sticky, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, {0xFFFFFFFF});
    const xcb_window_t gone = open(client, 42);
    xcb_destroy_window(client.get(), gone);
    setNumbers(client, client.root(), "_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL, {0});
    setNumbers(client, client.root(), "_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW,
               {sticky, hidden, gone, dock});
    client.synchronize();
    EXPECT_EQ(WindowCensus::live(windows), (std::vector<WindowCount>{{"Outer", 42, 1}}));
    const auto front = windows.windowInfo();
    ASSERT_EQ(front->size(), 3U);
    EXPECT_EQ(front->front().at("kCGWindowLayer"), WindowValue{std::int64_t{20}});
}

TEST_F(WindowServerTest, AsksOnlyWindowsThatListenToClose) {
    const Connection client{server.name()};
    const Connection asking{server.name()};
    EXPECT_FALSE(requestClose(asking, {41, 42}));
    const xcb_window_t listening = open(client, 41);
    open(client, 42);
    setNumbers(client, listening, "WM_PROTOCOLS", XCB_ATOM_ATOM,
               {atom(client.get(), "WM_DELETE_WINDOW")});
    client.synchronize();
    EXPECT_FALSE(requestClose(asking, {42}));
    EXPECT_FALSE(requestClose(asking, {}));
    EXPECT_TRUE(requestClose(asking, {40, 41}));
    client.synchronize();
    const Reply<xcb_generic_event_t> event{xcb_poll_for_event(client.get())};
    ASSERT_NE(event, nullptr);
    ASSERT_EQ(event->response_type & 0x7F, XCB_CLIENT_MESSAGE);
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
    EXPECT_EQ(message.window, listening);
    EXPECT_EQ(message.data.data32[0], atom(client.get(), "WM_DELETE_WINDOW"));
}

TEST_F(WindowServerTest, TellsItsDisplays) {
    const auto ids = windows.activeDisplays(8);
    ASSERT_TRUE(ids);
    ASSERT_EQ(ids->size(), 1U);
    EXPECT_EQ(windows.currentModeWidth(ids->front()), 1280);
    EXPECT_EQ(WindowCensus::displays(windows).count, 1);
    const auto widths = windows.modeWidths(ids->front());
    ASSERT_TRUE(widths);
    EXPECT_NE(std::find(widths->begin(), widths->end(), 1280), widths->end());
    EXPECT_TRUE(windows.activeDisplays(0)->empty());
    EXPECT_FALSE(windows.currentModeWidth(ids->front() + 1000));
    EXPECT_FALSE(windows.modeWidths(ids->front() + 1000));
}

TEST(WithoutADisplay, NothingIsTold) {
    for (const char* display : {"", ":65000", "no such display", "unix:/no/such/socket"}) {
        XWindowServer windows{display, [] {
                                  ADD_FAILURE() << "names nobody needs";
                                  return std::unordered_map<std::int32_t, std::string>{};
                              }};
        EXPECT_FALSE(windows.windowInfo()) << display;
        EXPECT_FALSE(windows.activeDisplays(8)) << display;
        EXPECT_FALSE(windows.currentModeWidth(1) || windows.modeWidths(1)) << display;
        EXPECT_EQ(WindowCensus::displays(windows), DisplayInfo{}) << display;
    }
}

} // namespace
} // namespace pacelet::Linux::X11
