#include "Hosts/Linux/Desktop/Display.h"

#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/X11/Connection.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace pacelet::Linux {

namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Whether something listens at this path.
bool answers(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::copy(path.begin(), path.end(), address.sun_path);
    const Descriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    return socket && ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address),
                               sizeof address) == 0;
}

bool hasWayland() {
    const std::string display = environment("WAYLAND_DISPLAY");
    if (display.empty()) {
        return false;
    }
    return answers(display.front() == '/' ? display
                                          : environment("XDG_RUNTIME_DIR") + "/" + display);
}

} // namespace

std::optional<ChosenDisplay> chooseDisplay() {
    if (std::string chosen = environment("QT_QPA_PLATFORM"); !chosen.empty()) {
        return ChosenDisplay{std::move(chosen)};
    }
    if (auto connection = std::make_shared<X11::Connection>(environment("DISPLAY")); *connection) {
        return ChosenDisplay{"xcb", std::move(connection)};
    }
    if (hasWayland()) {
        return ChosenDisplay{"wayland"};
    }
    return std::nullopt;
}

} // namespace pacelet::Linux
