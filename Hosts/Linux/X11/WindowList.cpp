#include "Hosts/Linux/X11/WindowList.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unistd.h>

namespace pacelet::Linux::X11 {

namespace {

/// The layers on which a Mac has such things.
struct LayerOfType {
    std::string_view type;
    std::int64_t layer;
};
constexpr auto layers = std::to_array<LayerOfType>({{"_NET_WM_WINDOW_TYPE_NORMAL", 0},
                                                    {"_NET_WM_WINDOW_TYPE_DIALOG", 0},
                                                    {"_NET_WM_WINDOW_TYPE_UTILITY", 0},
                                                    {"_NET_WM_WINDOW_TYPE_DESKTOP", -1},
                                                    {"_NET_WM_WINDOW_TYPE_TOOLBAR", 3},
                                                    {"_NET_WM_WINDOW_TYPE_MENU", 3},
                                                    {"_NET_WM_WINDOW_TYPE_DOCK", 20},
                                                    {"_NET_WM_WINDOW_TYPE_SPLASH", 20},
                                                    {"_NET_WM_WINDOW_TYPE_NOTIFICATION", 25},
                                                    {"_NET_WM_WINDOW_TYPE_DROPDOWN_MENU", 101},
                                                    {"_NET_WM_WINDOW_TYPE_POPUP_MENU", 101},
                                                    {"_NET_WM_WINDOW_TYPE_COMBO", 101},
                                                    {"_NET_WM_WINDOW_TYPE_TOOLTIP", 101},
                                                    {"_NET_WM_WINDOW_TYPE_DND", 101}});

constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

std::string hostName() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

template<typename Value>
bool contains(const std::vector<Value>& values, Value value) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

/// The questions about one window, all sent before the first answer is read.
struct Questions {
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    PropertyQuestion pid;
    PropertyQuestion machine;
    PropertyQuestion className;
    PropertyQuestion types;
    PropertyQuestion states;
    PropertyQuestion desktop;
    PropertyQuestion protocols;
};

class WindowReader {
public:
    explicit WindowReader(const Connection& connection)
        : connection_{connection},
          pid_{connection.atom("_NET_WM_PID")},
          type_{connection.atom("_NET_WM_WINDOW_TYPE")},
          state_{connection.atom("_NET_WM_STATE")},
          hidden_{connection.atom("_NET_WM_STATE_HIDDEN")},
          desktop_{connection.atom("_NET_WM_DESKTOP")},
          protocols_{connection.atom("WM_PROTOCOLS")},
          deleteWindow_{connection.atom("WM_DELETE_WINDOW")},
          host_{hostName()} {
        for (std::size_t at = 0; at < layers.size(); ++at) {
            typeAtoms_[at] = connection.atom(layers[at].type);
        }
        const auto current = rootNumbers("_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL);
        if (!current.empty()) {
            currentDesktop_ = current.front();
        }
    }

    std::vector<Window> read() {
        bool isManaged = false;
        std::vector<Questions> asked;
        for (const xcb_window_t window : ids(isManaged)) {
            asked.push_back(ask(window));
        }
        std::vector<Window> windows;
        for (const Questions& questions : asked) {
            if (auto window = answer(questions, isManaged)) {
                windows.push_back(*std::move(window));
            }
        }
        return windows;
    }

private:
    std::vector<std::uint32_t> rootNumbers(std::string_view property, xcb_atom_t type) const {
        return PropertyQuestion{connection_, connection_.root(), connection_.atom(property), type}
            .numbers();
    }

    /// Front to back.
    std::vector<xcb_window_t> ids(bool& isManaged) const {
        std::vector<xcb_window_t> found = rootNumbers("_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW);
        if (found.empty()) {
            found = rootNumbers("_NET_CLIENT_LIST", XCB_ATOM_WINDOW);
        }
        isManaged = !found.empty();
        const auto tree = isManaged ? nullptr
                                    : replyTo(connection_.get(),
                                              xcb_query_tree(connection_.get(), connection_.root()),
                                              xcb_query_tree_reply);
        if (tree != nullptr) {
            const xcb_window_t* first = xcb_query_tree_children(tree.get());
            found.assign(first, first + xcb_query_tree_children_length(tree.get()));
        }
        std::reverse(found.begin(), found.end());
        return found;
    }

    Questions ask(xcb_window_t window) const {
        const auto property = [&](xcb_atom_t name, xcb_atom_t type) {
            return PropertyQuestion{connection_, window, name, type};
        };
        return {window,
                xcb_get_window_attributes(connection_.get(), window),
                property(pid_, XCB_ATOM_CARDINAL),
                property(XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_ANY),
                property(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING),
                property(type_, XCB_ATOM_ATOM),
                property(state_, XCB_ATOM_ATOM),
                property(desktop_, XCB_ATOM_CARDINAL),
                property(protocols_, XCB_ATOM_ATOM)};
    }

    /// Nothing for a window that has gone, or that is no application's.
    std::optional<Window> answer(const Questions& asked, bool isManaged) const {
        // Each answer is fetched, or it would stay behind in the connection.
        const auto attributes =
            replyTo(connection_.get(), asked.attributes, xcb_get_window_attributes_reply);
        const std::vector<std::uint32_t> pid = asked.pid.numbers();
        const std::string machine = asked.machine.text();
        const std::string names = asked.className.text();
        const std::vector<std::uint32_t> types = asked.types.numbers();
        const std::vector<std::uint32_t> states = asked.states.numbers();
        const std::vector<std::uint32_t> desktop = asked.desktop.numbers();
        const std::vector<std::uint32_t> protocols = asked.protocols.numbers();
        if (attributes == nullptr || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT ||
            (!isManaged && (attributes->override_redirect != 0 ||
                            attributes->map_state == XCB_MAP_STATE_UNMAPPED))) {
            return std::nullopt;
        }
        Window window;
        window.id = asked.window;
        if (!pid.empty() && (machine.empty() || machine == host_)) {
            window.pid = static_cast<std::int32_t>(pid.front());
        }
        window.className = classOf(names);
        window.layer = layerOf(types);
        window.isOnScreen = attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                            !contains(states, hidden_) && isOnCurrentDesktop(desktop);
        window.takesCloseRequests = contains(protocols, deleteWindow_);
        return window;
    }

    /// The property holds two names, each with a NUL behind it; the second is for the user.
    static std::string classOf(const std::string& names) {
        const auto pieces = splitKeepingEmpty(names, '\0');
        return repairedUTF8(std::string{pieces.size() > 1 ? pieces[1] : pieces[0]});
    }

    /// The first type that is known counts; a window that tells none is a normal one.
    std::int64_t layerOf(const std::vector<std::uint32_t>& types) const {
        for (const xcb_atom_t type : types) {
            const auto known = std::find(typeAtoms_.begin(), typeAtoms_.end(), type);
            if (type != XCB_ATOM_NONE && known != typeAtoms_.end()) {
                return layers[static_cast<std::size_t>(known - typeAtoms_.begin())].layer;
            }
        }
        return 0;
    }

    bool isOnCurrentDesktop(const std::vector<std::uint32_t>& desktop) const {
        return desktop.empty() || !currentDesktop_ || desktop.front() == everyDesktop ||
               desktop.front() == *currentDesktop_;
    }

    const Connection& connection_;
    xcb_atom_t pid_;
    xcb_atom_t type_;
    xcb_atom_t state_;
    xcb_atom_t hidden_;
    xcb_atom_t desktop_;
    xcb_atom_t protocols_;
    xcb_atom_t deleteWindow_;
    std::string host_;
    std::array<xcb_atom_t, layers.size()> typeAtoms_{};
    std::optional<std::uint32_t> currentDesktop_;
};

} // namespace

std::vector<Window> readWindows(const Connection& connection) {
    return WindowReader{connection}.read();
}

bool requestClose(const Connection& connection, const std::vector<std::int32_t>& pids) {
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.type = connection.atom("WM_PROTOCOLS");
    request.data.data32[0] = connection.atom("WM_DELETE_WINDOW");
    request.data.data32[1] = XCB_CURRENT_TIME;
    bool isSent = false;
    for (const Window& window : readWindows(connection)) {
        if (window.takesCloseRequests && window.pid && contains(pids, *window.pid)) {
            request.window = window.id;
            xcb_send_event(connection.get(), 0, window.id, XCB_EVENT_MASK_NO_EVENT,
                           reinterpret_cast<const char*>(&request));
            isSent = true;
        }
    }
    connection.synchronize();
    return isSent;
}

} // namespace pacelet::Linux::X11
