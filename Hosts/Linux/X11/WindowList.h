#pragma once

#include "Hosts/Linux/X11/Connection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::Linux::X11 {

/// A window of an application.
struct Window {
    xcb_window_t id = 0;
    std::optional<std::int32_t> pid; ///< its owner, when that told it and runs on this machine
    std::string className;           ///< its owner's name for itself; may be empty
    std::int64_t layer = 0;          ///< 0 for the normal ones, as on a Mac
    bool isOnScreen = false;         ///< neither minimized nor on another desktop
    bool takesCloseRequests = false;
};

/// The windows that the window manager keeps, front to back; without a window manager, those that
/// stand on the bare screen.
std::vector<Window> readWindows(const Connection& connection);

/// Whether one of these processes has a window that takes a request to close.
bool canRequestClose(const Connection& connection, const std::vector<std::int32_t>& pids);

/// Asks the windows of these processes to close, as their close buttons would. False when there was
/// none that takes such a request.
bool requestClose(const Connection& connection, const std::vector<std::int32_t>& pids);

} // namespace pacelet::Linux::X11
