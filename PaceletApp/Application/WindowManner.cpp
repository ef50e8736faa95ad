#include "PaceletApp/Application/WindowManner.h"

#ifndef __APPLE__
#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>
#endif

namespace pacelet::WindowManner {

namespace {

void show(QWindow& window) {
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    // QWindow::show() would bring one that fills the screen back to its size.
    window.setVisible(true);
    window.raise();
    window.requestActivate();
}

} // namespace

#ifdef __APPLE__

// The Dock shows programs, and a program comes forward with its window.
void leaveTaskBar(QWindow&) {}

void bringForward(QWindow& window, const Activation&) {
    show(window);
}

#else

namespace {

constexpr std::uint8_t longs = 32; ///< the format of a property or message of whole numbers
constexpr std::uint8_t bytes = 8;

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

/// Qt's own connection, so that what is said keeps its place among what Qt says. Null without one.
xcb_connection_t* server() {
    const auto* const native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native != nullptr ? native->connection() : nullptr;
}

xcb_window_t idOf(const QWindow& window) {
    return static_cast<xcb_window_t>(window.winId());
}

xcb_atom_t atom(xcb_connection_t* server, const char* name) {
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply{xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr)};
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void sendToRoot(xcb_connection_t* server, const xcb_client_message_event_t& event,
                std::uint32_t listeners) {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    xcb_send_event(server, 0, root, listeners, reinterpret_cast<const char*>(&event));
}

xcb_client_message_event_t message(xcb_window_t window, xcb_atom_t type, std::uint8_t format) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = format;
    event.window = window;
    event.type = type;
    return event;
}

/// Tells the launcher that the start it is waiting for has led somewhere. Goes out in pieces.
void endStartup(xcb_connection_t* server, xcb_window_t window, const QByteArray& startupID) {
    QByteArray quoted = startupID;
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    const QByteArray text = "remove: ID=\"" + quoted + "\"" + '\0';
    const xcb_atom_t more = atom(server, "_NET_STARTUP_INFO");
    auto piece = message(window, atom(server, "_NET_STARTUP_INFO_BEGIN"), bytes);
    for (qsizetype at = 0; at < text.size(); at += sizeof piece.data.data8) {
        const QByteArray part = text.mid(at, sizeof piece.data.data8);
        std::fill(std::begin(piece.data.data8), std::end(piece.data.data8), std::uint8_t{0});
        std::copy(part.begin(), part.end(), std::begin(piece.data.data8));
        sendToRoot(server, piece, XCB_EVENT_MASK_PROPERTY_CHANGE);
        piece.type = more;
    }
}

/// To be called before the window is shown: that is when a window manager looks for it.
void nameStartup(xcb_connection_t* server, QWindow& window, const QByteArray& startupID) {
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, idOf(window),
                        atom(server, "_NET_STARTUP_ID"), atom(server, "UTF8_STRING"), bytes,
                        static_cast<std::uint32_t>(startupID.size()), startupID.constData());
}

/// Asks for the keyboard in the name of a user who asked at that time. Qt knows of no time but that
/// of its own last event.
void activateAsOf(xcb_connection_t* server, QWindow& window, std::uint32_t time) {
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, idOf(window),
                        atom(server, "_NET_WM_USER_TIME"), XCB_ATOM_CARDINAL, longs, 1, &time);
    auto request = message(idOf(window), atom(server, "_NET_ACTIVE_WINDOW"), longs);
    request.data.data32[0] = 1; // from an application
    request.data.data32[1] = time;
    sendToRoot(server, request,
               XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
}

} // namespace

void leaveTaskBar(QWindow& window) {
    xcb_connection_t* const connection = server();
    if (connection == nullptr) {
        return;
    }
    // Qt adds its own states to those that stand there.
    const std::array states{atom(connection, "_NET_WM_STATE_SKIP_TASKBAR"),
                            atom(connection, "_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, idOf(window),
                        atom(connection, "_NET_WM_STATE"), XCB_ATOM_ATOM, longs, states.size(),
                        states.data());
}

void bringForward(QWindow& window, const Activation& activation) {
    xcb_connection_t* const connection = server();
    const bool isGiven = connection != nullptr && !activation.startupID.isEmpty();
    if (isGiven) {
        nameStartup(connection, window, activation.startupID);
    }
    if (!activation.token.isEmpty()) {
        // Where Qt looks for it.
        qputenv("XDG_ACTIVATION_TOKEN", activation.token);
    }
    show(window);
    qunsetenv("XDG_ACTIVATION_TOKEN"); // nor does a program have it that we start
    if (isGiven) {
        if (const auto time = activation.time()) {
            activateAsOf(connection, window, *time);
        }
        endStartup(connection, idOf(window), activation.startupID);
        xcb_flush(connection);
    }
}

#endif

} // namespace pacelet::WindowManner
