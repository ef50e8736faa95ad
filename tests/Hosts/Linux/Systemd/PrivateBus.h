#pragma once

#include "tests/Support/ChildProgram.h"
#include "tests/Support/TemporaryFolder.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace pacelet::testing {

/// A message bus of a test's own, which stands in for the machine's and the user's.
class PrivateBus {
public:
    PrivateBus() {
        for (const char* variable : variables) {
            ::setenv(variable, address_.c_str(), 1);
        }
        eventually([this] { return !runs() || std::filesystem::exists(folder_.path() / "bus"); });
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        for (const char* variable : variables) {
            ::unsetenv(variable);
        }
    }

    /// False where no bus daemon is installed.
    bool runs() { return daemon_.runs(); }

    const std::string& address() const { return address_; }

private:
    static constexpr std::array variables{"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"};

    TemporaryFolder folder_;
    const std::string address_ = "unix:path=" + (folder_.path() / "bus").string();
    ChildProgram daemon_{
        {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + address_}, {}};
};

} // namespace pacelet::testing
