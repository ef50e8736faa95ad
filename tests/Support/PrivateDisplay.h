#pragma once

#include "Core/Support/Descriptor.h"

#include <array>
#include <csignal>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pacelet::testing {

/// A display server of a test's own, without a screen to look at.
class PrivateDisplay {
public:
    enum class WhenEmpty { stays, startsOver };

    /// `screen` is its size and depth, such as "1280x800x24". A server that starts over whenever
    /// its last client leaves, as most do, may miss the next one.
    explicit PrivateDisplay(const std::string& screen, WhenEmpty whenEmpty = WhenEmpty::stays) {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0) {
            return;
        }
        const Descriptor readEnd{ends[0]};
        Descriptor writeEnd{ends[1]};
        pid_ = ::fork();
        if (pid_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            const std::string number = std::to_string(writeEnd.get());
            ::execlp("Xvfb", "Xvfb", whenEmpty == WhenEmpty::stays ? "-noreset" : "-reset",
                     "-displayfd", number.c_str(), "-screen", "0", screen.c_str(), "-nolisten",
                     "tcp", nullptr);
            ::_exit(127);
        }
        writeEnd.reset();
        char character = 0;
        pollfd source{readEnd.get(), POLLIN, 0};
        while (::poll(&source, 1, 20'000) > 0 && ::read(readEnd.get(), &character, 1) == 1) {
            if (character == '\n') {
                name_ = ':' + number_;
                return;
            }
            number_ += character;
        }
    }
    PrivateDisplay(const PrivateDisplay&) = delete;
    PrivateDisplay& operator=(const PrivateDisplay&) = delete;
    ~PrivateDisplay() {
        if (pid_ > 0) {
            ::kill(pid_, SIGTERM);
            ::waitpid(pid_, nullptr, 0);
        }
    }

    /// As in DISPLAY; empty when there is no such server on this machine.
    const std::string& name() const { return name_; }

private:
    pid_t pid_ = 0;
    std::string number_;
    std::string name_;
};

} // namespace pacelet::testing
