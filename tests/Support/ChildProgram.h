#pragma once

#include "tests/Support/Eventually.h"

#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace pacelet::testing {

/// Names and values; an empty value takes the variable away.
using Environment = std::vector<std::pair<std::string, std::string>>;

/// A program that runs beside the test, and never longer than that.
class ChildProgram {
public:
    /// `command` is the program's name or path and its arguments; `environment` is added to ours.
    ChildProgram(const std::vector<std::string>& command, const Environment& environment) {
        std::vector<char*> arguments;
        for (const std::string& word : command) {
            arguments.push_back(const_cast<char*>(word.c_str()));
        }
        arguments.push_back(nullptr);
        pid_ = ::fork();
        if (pid_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            for (const auto& [name, value] : environment) {
                value.empty() ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value.c_str(), 1);
            }
            ::execvp(arguments.front(), arguments.data());
            ::_exit(127);
        }
    }
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;
    ~ChildProgram() {
        if (!status_ && pid_ > 0) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
    }

    pid_t pid() const { return pid_; }
    bool runs() { return !status(); }

    /// What it ended with: its exit status, or the negative number of the signal; nothing while it
    /// runs.
    std::optional<int> status() {
        int ended = 0;
        if (!status_ && ::waitpid(pid_, &ended, WNOHANG) == pid_) {
            status_ = WIFEXITED(ended) ? WEXITSTATUS(ended) : -WTERMSIG(ended);
        }
        return status_;
    }

    /// The same, once it has ended; nothing when it runs on after ten seconds.
    std::optional<int> end() {
        eventually([this] { return !runs(); });
        return status_;
    }

private:
    pid_t pid_ = -1;
    std::optional<int> status_;
};

} // namespace pacelet::testing
