#include "Hosts/Posix/Shell.h"

#include "Core/Support/Descriptor.h"
#include "Core/Support/Precondition.h"
#include "Core/Support/Text.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#ifdef __APPLE__
// Its headers leave that to whoever uses it.
extern "C" {
extern char** environ;
}
#endif

namespace pacelet::Shell {

namespace {

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

/// Both ends are closed in every child. Where the system can only mark them afterwards, a child of
/// ours that is born in between gets neither, since it is given nothing but its streams.
bool openPipe(std::array<int, 2>& ends) {
#ifdef __APPLE__
    if (::pipe(ends.data()) != 0) {
        return false;
    }
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    return true;
#else
    return ::pipe2(ends.data(), O_CLOEXEC) == 0;
#endif
}

Pipe makePipe(const std::string& executable) {
    std::array<int, 2> ends{};
    if (!openPipe(ends)) {
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
        closeAllOthers();

        sigset_t signals;
        posix_spawnattr_init(&attributes_);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
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
#ifdef __APPLE__
    static constexpr int flags =
        POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_CLOEXEC_DEFAULT;

    /// The flag closes what no action names; a program that has no standard input has none to hand
    /// on.
    void closeAllOthers() {
        if (::fcntl(STDIN_FILENO, F_GETFD) >= 0) {
            posix_spawn_file_actions_addinherit_np(&actions_, STDIN_FILENO);
        }
    }
#else
    static constexpr int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;

    void closeAllOthers() {
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    }
#endif

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

/// Takes what is there; false at the end.
bool readSome(const Descriptor& descriptor, std::string& text) {
    std::array<char, 65536> buffer;
    const ssize_t count = ::read(descriptor.get(), buffer.data(), buffer.size());
    if (count > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    precondition(count >= 0 || errno == EINTR, "reading from a pipe of our own failed");
    return count != 0;
}

/// Reads both streams to their ends at the same time: a child that fills one pipe waits for us, and
/// how much a pipe takes is the system's business.
void readToEnd(Pipe& standardOutput, Pipe& standardError, Output& output) {
    std::array streams{pollfd{standardOutput.readEnd.get(), POLLIN, 0},
                       pollfd{standardError.readEnd.get(), POLLIN, 0}};
    // A negative descriptor is one that is not asked about any more.
    while (streams[0].fd >= 0 || streams[1].fd >= 0) {
        if (::poll(streams.data(), streams.size(), -1) < 0) {
            precondition(errno == EINTR, "waiting for pipes of our own failed");
            continue;
        }
        if (streams[0].revents != 0 && !readSome(standardOutput.readEnd, output.stdout)) {
            streams[0].fd = -1;
        }
        if (streams[1].revents != 0 && !readSome(standardError.readEnd, output.stderr)) {
            streams[1].fd = -1;
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
    const SpawnPlan plan{standardOutput.writeEnd.get(), standardError.writeEnd.get()};
    const pid_t child = launch(executable, arguments, plan);
    standardOutput.writeEnd.reset();
    standardError.writeEnd.reset();

    Output output;
    readToEnd(standardOutput, standardError, output);
    output.status = waitForExit(child, executable);
    output.stdout = repairedUTF8(std::move(output.stdout));
    output.stderr = repairedUTF8(std::move(output.stderr));
    return output;
}

} // namespace pacelet::Shell
