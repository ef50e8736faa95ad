#pragma once

#include "tests/Support/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace pacelet::testing {

/// Looks until `isTrue` holds, for ten seconds at most; whether it came to hold.
template<typename Predicate>
bool eventually(Predicate&& isTrue) {
    for (int tries = 0; tries < 1000; ++tries) {
        if (isTrue()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{10});
    }
    return false;
}

/// A message bus of a test's own, which stands in for the machine's and the user's.
class PrivateBus {
public:
    PrivateBus() {
        const std::string socket = (folder_.path() / "bus").string();
        const std::string address = "unix:path=" + socket;
        ::setenv("DBUS_SYSTEM_BUS_ADDRESS", address.c_str(), 1);
        ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
        const std::string option = "--address=" + address;
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

private:
    TemporaryFolder folder_;
    pid_t daemon_ = -1;
    bool hasEnded_ = false;
};

} // namespace pacelet::testing
