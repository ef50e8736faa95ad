#include "Core/Usage/DayFile.h"

#include "Core/Support/Descriptor.h"

#include <cerrno>
#include <fcntl.h>

namespace pacelet::DayFile {

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::error_code writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(fd, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return lastError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

} // namespace

std::error_code append(const std::string& path, std::string_view line) {
    constexpr mode_t systemDefault = 0666;
    // Without O_NONBLOCK, a pipe of that name would hold up the caller.
    constexpr int flags = O_WRONLY | O_CLOEXEC | O_NONBLOCK;
    Descriptor file{::open(path.c_str(), flags)};
    if (!file) {
        file = Descriptor{::open(path.c_str(), flags | O_CREAT | O_TRUNC, systemDefault)};
    }
    if (!file) {
        return lastError();
    }
    const off_t end = ::lseek(file.get(), 0, SEEK_END);
    if (end < 0) {
        return lastError();
    }
    const std::error_code error = writeAll(file.get(), line);
    if (error) {
        // Should this fail too, the half line stays, and readers leave it out.
        [[maybe_unused]] const int cut = ::ftruncate(file.get(), end);
    }
    return error;
}

} // namespace pacelet::DayFile
