#include "Hosts/Posix/Shell.h"

#include "Core/Support/Descriptor.h"
#include "Core/Support/Precondition.h"
#include "Core/Support/Text.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace pacelet::Shell {

namespace {

/// The child's standard error is read only once standard output has ended, so what it writes there
/// in the meantime must fit the pipe: make it as roomy as an ordinary user may.
constexpr int errorPipeBytes = 1 << 20;

[[noreturn]] void failLaunch(const std::string& executable, int error) {
    throw LaunchError{executable, std::error_code{error, std::generic_category()}};
}

/// A descriptor outside 0 to 2, where the child's own standard streams go: a program that was
/// started without them would otherwise get a pipe in their place.
Descriptor aboveStandardStreams(Descriptor descriptor, const std::string& executable) {
    if (descriptor.get() > STDERR_FILENO) {
        return descriptor;
    }
    const int moved = ::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (moved < 0) {
        failLaunch(executable, errno);
    }
    return Descriptor{moved};
}

struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
};

Pipe makePipe(const std::string& executable) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        failLaunch(executable, errno);
    }
    Descriptor readEnd{ends[0]};
    Descriptor writeEnd{ends[1]};
    return {aboveStandardStreams(std::move(readEnd), executable),
            aboveStandardStreams(std::move(writeEnd), executable)};
}

/// How the child is set up: its streams, no descriptor of ours, and signals at their defaults.
class SpawnPlan {
public:
    SpawnPlan(int standardOutput, int standardError) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, standardOutput, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, standardError, STDERR_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);

        sigset_t signals;
        posix_spawnattr_init(&attributes_);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    const posix_spawn_file_actions_t* actions() const { return &actions_; }
    const posix_spawnattr_t* attributes() const { return &attributes_; }

private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

pid_t launch(const std::string& executable, const std::vector<std::string>& arguments,
             const SpawnPlan& plan) {
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 2);
    argv.push_back(const_cast<char*>(executable.c_str()));
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);

    pid_t child = -1;
    const int error = ::posix_spawn(&child, executable.c_str(), plan.actions(), plan.attributes(),
                                    argv.data(), environ);
    if (error != 0) {
        failLaunch(executable, error);
    }
    return child;
}

std::string readToEnd(const Descriptor& descriptor) {
    std::string text;
    std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t count = ::read(descriptor.get(), buffer.data(), buffer.size());
        if (count > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0) {
            return text;
        } else {
            precondition(errno == EINTR, "reading from a pipe of our own failed");
        }
    }
}

std::int32_t waitForExit(pid_t child, const std::string& executable) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            failLaunch(executable, errno);
        }
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status);
}

} // namespace

Output run(const std::string& executable, const std::vector<std::string>& arguments) {
    Pipe standardOutput = makePipe(executable);
    Pipe standardError = makePipe(executable);
    // Best effort: with the usual size only a tool that is unusually talkative would notice.
    ::fcntl(standardError.writeEnd.get(), F_SETPIPE_SZ, errorPipeBytes);

    const SpawnPlan plan{standardOutput.writeEnd.get(), standardError.writeEnd.get()};
    const pid_t child = launch(executable, arguments, plan);
    standardOutput.writeEnd.reset();
    standardError.writeEnd.reset();

    Output output;
    output.stdout = readToEnd(standardOutput.readEnd);
    output.stderr = readToEnd(standardError.readEnd);
    output.status = waitForExit(child, executable);
    output.stdout = repairedUTF8(std::move(output.stdout));
    output.stderr = repairedUTF8(std::move(output.stderr));
    return output;
}

} // namespace pacelet::Shell
