#include "Hosts/Linux/Desktop/DetachedProgram.h"

#include "Core/Support/Descriptor.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pacelet::Linux {

namespace {

struct Launch {
    std::vector<char*> arguments; // with a null pointer at the end
    const char* folder;           // null: ours
    int report;                   // closes when the program has started; else gets a byte
};

// Between fork and exec other threads' locks may be held for ever: nothing here allocates.

void reportFailure(const Launch& launch) {
    const char failed = 1;
    [[maybe_unused]] const ssize_t ignored = ::write(launch.report, &failed, 1);
}

[[noreturn]] void runProgram(const Launch& launch) {
    struct sigaction standard {};
    standard.sa_handler = SIG_DFL;
    ::sigaction(SIGPIPE, &standard, nullptr);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::dup2(nothing, stream);
    }
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    if (launch.folder == nullptr || ::chdir(launch.folder) == 0) {
        ::execv(launch.arguments.front(), launch.arguments.data());
    }
    reportFailure(launch);
    ::_exit(127);
}

[[noreturn]] void runBetween(const Launch& launch) {
    ::setsid();
    const pid_t program = ::fork();
    if (program == 0) {
        runProgram(launch);
    }
    if (program < 0) {
        reportFailure(launch);
    }
    // With its parent gone the program belongs to the session, which waits for it.
    ::_exit(0);
}

bool hasStarted(int report) {
    char failed = 0;
    ssize_t count = 0;
    do {
        count = ::read(report, &failed, 1);
    } while (count < 0 && errno == EINTR);
    return count == 0;
}

} // namespace

bool startDetached(const std::vector<std::string>& command, const std::string& folder) {
    std::array<int, 2> ends{};
    if (command.empty() || ::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return false;
    }
    const Descriptor readEnd{ends[0]};
    Descriptor writeEnd{ends[1]};
    Launch launch{{}, folder.empty() ? nullptr : folder.c_str(), writeEnd.get()};
    for (const std::string& word : command) {
        launch.arguments.push_back(const_cast<char*>(word.c_str()));
    }
    launch.arguments.push_back(nullptr);
    const pid_t between = ::fork();
    if (between == 0) {
        runBetween(launch);
    }
    writeEnd.reset();
    // Its status tells nothing: it may be lost where SIGCHLD is ignored.
    while (between > 0 && ::waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
    }
    return between > 0 && hasStarted(readEnd.get());
}

} // namespace pacelet::Linux
