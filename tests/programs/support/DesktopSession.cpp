#include "tests/programs/support/DesktopSession.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Desktop/KeyFile.h"

#include <algorithm>
#include <cstring>
#include <xcb/xtest.h>

namespace pacelet::testing {

using Linux::X11::PropertyQuestion;
using Linux::X11::replyTo;

namespace {

const std::string managerSettings = R"(<?xml version="1.0"?>
<JWM>
  <Tray x="0" y="-1" height="30"><Spacer width="1500"/><Dock/></Tray>
  <TrayStyle><Background>#333333</Background></TrayStyle>
  <Desktops width="1" height="1"/>
  <FocusModel>click</FocusModel>
</JWM>
)";

/// The class by which desktops tell our windows, as our entry in the menu names it.
std::string windowClass() {
    std::string text;
    std::string name;
    readFile(PACELET_SOURCE_DIR "/resources/desktop/app.pacelet.Pacelet.desktop", 1 << 16, text);
    Linux::forEachKey(text, [&](std::string_view, std::string_view key, std::string_view value) {
        if (key == "StartupWMClass") {
            name = value;
        }
    });
    return name;
}

} // namespace

DesktopSession::DesktopSession()
    : display_{std::to_string(width) + 'x' + std::to_string(height) + "x24"},
      connection_{display_.name()} {
    if (!connection_) {
        return;
    }
    home_.write("config/pacelet/preferences.json", R"({"onboarded":true})");
    std::filesystem::create_directories(home_.path() / "run");
    std::filesystem::permissions(home_.path() / "run", std::filesystem::perms::owner_all);
    const std::string settings = home_.write("jwmrc", managerSettings).string();
    manager_.emplace(std::vector<std::string>{"jwm", "-f", settings}, environment());
    // A tray is there when somebody owns its name.
    isUp_ = eventually([this] {
        const xcb_atom_t tray = connection_.atom("_NET_SYSTEM_TRAY_S0");
        const auto owner =
            replyTo(connection_.get(), xcb_get_selection_owner(connection_.get(), tray),
                    xcb_get_selection_owner_reply);
        return !manager_->runs() || (owner && owner->owner != XCB_WINDOW_NONE);
    });
    isUp_ = isUp_ && manager_->runs();
}

Environment DesktopSession::environment() const {
    const std::string home = home_.path().string();
    return {{"DISPLAY", display_.name()},
            {"HOME", home},
            {"XDG_CONFIG_HOME", home + "/config"},
            {"XDG_DATA_HOME", home + "/data"},
            {"XDG_RUNTIME_DIR", home + "/run"},
            {"LC_ALL", "C.UTF-8"},
            {"WAYLAND_DISPLAY", ""},
            {"QT_QPA_PLATFORM", ""},
            {"QT_QUICK_BACKEND", ""},
            // No bus answers there, and none is started.
            {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + home + "/none"},
            // Leaks of the graphics libraries are not what is looked for here.
            {"ASAN_OPTIONS", "detect_leaks=0"}};
}

ChildProgram DesktopSession::start(const std::string& program, std::vector<std::string> arguments,
                                   const Environment& more) const {
    arguments.insert(arguments.begin(),
                     program.starts_with('/') ? program : PACELET_BIN_DIR "/" + program);
    Environment all = environment();
    all.insert(all.end(), more.begin(), more.end());
    return {arguments, all};
}

std::vector<SeenWindow> DesktopSession::windows() const {
    std::vector<SeenWindow> found = allWindows();
    std::erase_if(found, [ours = windowClass()](const SeenWindow& window) {
        return window.windowClass != ours;
    });
    return found;
}

std::vector<SeenWindow> DesktopSession::allWindows() const {
    std::vector<SeenWindow> found;
    const PropertyQuestion list{connection_, connection_.root(),
                                connection_.atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW};
    for (const xcb_window_t id : list.numbers()) {
        const PropertyQuestion name{connection_, id, connection_.atom("_NET_WM_NAME"),
                                    connection_.atom("UTF8_STRING")};
        const PropertyQuestion kind{connection_, id, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING};
        const auto size = replyTo(connection_.get(), xcb_get_geometry(connection_.get(), id),
                                  xcb_get_geometry_reply);
        const auto place =
            replyTo(connection_.get(),
                    xcb_translate_coordinates(connection_.get(), id, connection_.root(), 0, 0),
                    xcb_translate_coordinates_reply);
        // The class stands behind the name of the program.
        const std::string names = kind.text();
        const auto both = splitDroppingEmpty(names, '\0');
        if (size && place && !both.empty()) {
            found.push_back({id,
                             name.text(),
                             std::string{both.back()},
                             {place->dst_x, place->dst_y, size->width, size->height}});
        }
    }
    return found;
}

bool DesktopSession::hasState(xcb_window_t window, const std::string& state) const {
    const auto states =
        PropertyQuestion{connection_, window, connection_.atom("_NET_WM_STATE"), XCB_ATOM_ATOM}
            .numbers();
    return std::ranges::find(states, connection_.atom(state.c_str())) != states.end();
}

std::string DesktopSession::startupID(xcb_window_t window) const {
    return std::string{PropertyQuestion{connection_, window, connection_.atom("_NET_STARTUP_ID"),
                                        connection_.atom("UTF8_STRING")}
                           .text()};
}

xcb_window_t DesktopSession::activeWindow() const {
    const auto active = PropertyQuestion{connection_, connection_.root(),
                                         connection_.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW}
                            .numbers();
    return active.empty() ? xcb_window_t{XCB_WINDOW_NONE} : active.front();
}

std::vector<std::uint32_t> DesktopSession::pixels(const Area& area) const {
    const auto picture =
        replyTo(connection_.get(),
                xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection_.root(),
                              static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                              static_cast<std::uint16_t>(area.width),
                              static_cast<std::uint16_t>(area.height), ~0U),
                xcb_get_image_reply);
    if (!picture) {
        return {};
    }
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(area.width * area.height));
    std::memcpy(pixels.data(), xcb_get_image_data(picture.get()), pixels.size() * 4);
    for (std::uint32_t& pixel : pixels) {
        pixel &= 0xFFFFFF;
    }
    return pixels;
}

std::size_t DesktopSession::colours(const Area& area) const {
    std::vector<std::uint32_t> all = pixels(area);
    std::ranges::sort(all);
    return static_cast<std::size_t>(std::unique(all.begin(), all.end()) - all.begin());
}

std::optional<Area> DesktopSession::find(std::uint32_t colour, const Area& area) const {
    const std::vector<std::uint32_t> all = pixels(area);
    if (all.empty()) {
        return std::nullopt;
    }
    int left = area.width;
    int right = 0;
    int top = area.height;
    int bottom = 0;
    for (int y = 0; y < area.height; ++y) {
        for (int x = 0; x < area.width; ++x) {
            if (all[static_cast<std::size_t>(y) * static_cast<std::size_t>(area.width) +
                    static_cast<std::size_t>(x)] == colour) {
                left = std::min(left, x);
                right = std::max(right, x + 1);
                top = std::min(top, y);
                bottom = std::max(bottom, y + 1);
            }
        }
    }
    return right == 0
               ? std::nullopt
               : std::optional{Area{area.x + left, area.y + top, right - left, bottom - top}};
}

void DesktopSession::send(std::uint8_t type, std::uint8_t detail, int x, int y) const {
    xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, connection_.root(),
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
}

void DesktopSession::point(int x, int y) const {
    send(XCB_MOTION_NOTIFY, 0, x, y);
    connection_.synchronize();
}

void DesktopSession::click(int x, int y) const {
    point(x, y);
    send(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1);
    send(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1);
    connection_.synchronize();
}

xcb_keycode_t DesktopSession::keyOf(std::uint32_t symbol) const {
    const xcb_setup_t* const setup = xcb_get_setup(connection_.get());
    const auto first = setup->min_keycode;
    const auto map =
        replyTo(connection_.get(),
                xcb_get_keyboard_mapping(connection_.get(), first,
                                         static_cast<std::uint8_t>(setup->max_keycode - first + 1)),
                xcb_get_keyboard_mapping_reply);
    const xcb_keysym_t* const symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    const int count = xcb_get_keyboard_mapping_keysyms_length(map.get());
    const auto at = std::find(symbols, symbols + count, symbol) - symbols;
    return static_cast<xcb_keycode_t>(first + at / map->keysyms_per_keycode);
}

void DesktopSession::press(std::initializer_list<std::uint32_t> symbols) const {
    for (const std::uint32_t symbol : symbols) {
        send(XCB_KEY_PRESS, keyOf(symbol));
    }
    for (const std::uint32_t symbol : symbols) {
        send(XCB_KEY_RELEASE, keyOf(symbol));
    }
    connection_.synchronize();
}

void DesktopSession::close(xcb_window_t window) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = connection_.atom("_NET_CLOSE_WINDOW");
    event.data.data32[1] = 2; // as a pager does for its user
    xcb_send_event(connection_.get(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    connection_.synchronize();
}

} // namespace pacelet::testing
