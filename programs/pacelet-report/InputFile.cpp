#include "programs/pacelet-report/InputFile.h"

#include "Core/Support/Descriptor.h"
#include "Core/Support/Text.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace pacelet::report {

namespace {

/// How long a pipe may stand without anybody who writes to it.
constexpr int patienceInMilliseconds = 2000;

constexpr int forEver = -1;

bool becomesReadable(int fd, int milliseconds) {
    pollfd waiting{fd, POLLIN, 0};
    return ::poll(&waiting, 1, milliseconds) != 0;
}

bool isPipe(int fd) {
    struct stat facts {};
    return ::fstat(fd, &facts) == 0 && S_ISFIFO(facts.st_mode);
}

[[noreturn]] void failReading(const std::string& path) {
    throw FileError{fmt::format("couldn't read {}: {}", inputName(path),
                                std::generic_category().message(errno))};
}

std::string readAll(int fd, const std::string& path) {
    std::string text;
    std::array<char, 1 << 16> room{};
    bool waitsForWriter = isPipe(fd);
    for (;;) {
        const ssize_t count = ::read(fd, room.data(), room.size());
        if (count > 0) {
            waitsForWriter = false;
            text.append(room.data(), static_cast<std::size_t>(count));
            if (text.size() > largestInput) {
                throw FileError{fmt::format("{} is larger than any process table: more than {} MB",
                                            inputName(path), largestInput >> 20)};
            }
        } else if (count == 0 && waitsForWriter) {
            // The end of a pipe that nobody has opened yet.
            waitsForWriter = false;
            if (!becomesReadable(fd, patienceInMilliseconds)) {
                throw FileError{fmt::format("nobody writes to {}", inputName(path))};
            }
        } else if (count == 0) {
            return text;
        } else if (errno == EAGAIN) {
            becomesReadable(fd, forEver);
        } else if (errno != EINTR) {
            failReading(path);
        }
    }
}

} // namespace

std::string inputName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

std::string readInput(const std::string& path) {
    if (path == "-") {
        return repairedUTF8(decodedText(readAll(STDIN_FILENO, path)));
    }
    // Without O_NONBLOCK, opening a pipe would wait for somebody to write to it.
    const Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)};
    if (!file) {
        failReading(path);
    }
    return repairedUTF8(decodedText(readAll(file.get(), path)));
}

} // namespace pacelet::report
