#include "Core/Support/StandardStreams.h"

#include "Core/Support/Files.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace pacelet::StandardStreams {

void secure() {
    // The lowest number that is free is given first, so they are opened in order.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0) {
            [[maybe_unused]] const int opened = ::open("/dev/null", O_RDWR);
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGCHLD, SIG_DFL);
}

bool print(std::string_view text) {
    // What others have printed comes first.
    return std::fflush(stdout) == 0 && !writeAll(STDOUT_FILENO, text);
}

void complain(std::string_view line) {
    // In one piece: others may write there at the same time.
    std::string whole{line};
    whole += '\n';
    [[maybe_unused]] const std::error_code unread = writeAll(STDERR_FILENO, whole);
}

} // namespace pacelet::StandardStreams
