#pragma once

#include "tests/Support/Eventually.h"
#include "tests/Support/TemporaryFolder.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pacelet::testing {

/// A message bus of a test's own, which stands in for the machine's and the user's.
class PrivateBus {
public:
    PrivateBus() {
        const std::string socket = (folder_.path() / "bus").string();
        address_ = "unix:path=" + socket;
        ::setenv("DBUS_SYSTEM_BUS_ADDRESS", address_.c_str(), 1);
        ::setenv("DBUS_SESSION_BUS_ADDRESS", address_.c_str(), 1);
        const std::string option = "--address=" + address_;
        daemon_ = ::fork();
        if (daemon_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nopidfile",
                     option.c_str(), nullptr);
            ::_exit(127);
        }
        eventually([&] {
            hasEnded_ = ::waitpid(daemon_, nullptr, WNOHANG) != 0;
            return hasEnded_ || std::filesystem::exists(socket);
        });
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        if (!hasEnded_) {
            ::kill(daemon_, SIGKILL);
            ::waitpid(daemon_, nullptr, 0);
        }
        ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
        ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    }

    /// False where no bus daemon is installed.
    bool runs() const { return !hasEnded_; }

    const std::string& address() const { return address_; }

private:
    TemporaryFolder folder_;
    std::string address_;
    pid_t daemon_ = -1;
    bool hasEnded_ = false;
};

} // namespace pacelet::testing
