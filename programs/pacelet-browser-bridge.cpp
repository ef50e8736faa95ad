// The native messaging host that a browser starts for our extension: carries its frames to the
// running program and back.

#include "Hosts/Linux/Browser/BridgeWire.h"
#include "programs/pacelet-browser-bridge/Relay.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <string_view>
#include <unistd.h>

namespace {

constexpr int statusUnavailable = 1;
constexpr int statusUsage = 2;

/// A browser names the extension that asks.
bool isStartedByBrowser(int argc, char** argv) {
    return argc > 1 && std::string_view{argv[1]}.starts_with("chrome-extension://");
}

} // namespace

int main(int argc, char** argv) {
    if (!isStartedByBrowser(argc, argv)) {
        std::fputs("pacelet-browser-bridge is started by a browser, for Pacelet's extension.\n",
                   stderr);
        return statusUsage;
    }
    std::signal(SIGPIPE, SIG_IGN);
    try {
        pacelet::bridge::Relay relay{STDIN_FILENO, STDOUT_FILENO,
                                     pacelet::Linux::BridgeWire::standardFolder()};
        return relay.run() ? 0 : statusUnavailable;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "pacelet-browser-bridge: %s\n", error.what());
        return statusUnavailable;
    }
}
