#include "Core/Usage/DayFile.h"

#include "Core/Support/Descriptor.h"
#include "Core/Support/Files.h"
#include "Core/Usage/OwnersOnly.h"

#include <cerrno>
#include <fcntl.h>

namespace pacelet::DayFile {

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// Whether the file's last line lacks its end: a power cut or a full disk may have taken it. A file
/// that may not be read counts as whole, as does an empty one, which has nothing before its end.
bool endsWithinLine(const std::string& path, off_t end) {
    const Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    char last = '\n';
    return ::pread(file.get(), &last, 1, end - 1) == 1 && last != '\n';
}

} // namespace

std::error_code append(const std::string& path, std::string_view line) {
    // Without O_NONBLOCK, a pipe of that name would hold up the caller; without O_APPEND, two who
    // write at once would write over each other.
    constexpr int flags = O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK;
    Descriptor file{::open(path.c_str(), flags)};
    if (!file) {
        file = Descriptor{::open(path.c_str(), flags | O_CREAT | O_TRUNC, OwnersOnly::fileMode)};
    }
    if (!file) {
        return lastError();
    }
    OwnersOnly::keep(path);
    const off_t end = ::lseek(file.get(), 0, SEEK_END);
    if (end < 0) {
        return lastError();
    }
    const std::string bytes = std::string{endsWithinLine(path, end) ? "\n" : ""}.append(line);
    const std::error_code error = writeAll(file.get(), bytes);
    if (error) {
        // Should this fail too, the half line stays: readers leave it out, and the next line begins
        // behind it.
        [[maybe_unused]] const int cut = ::ftruncate(file.get(), end);
    }
    return error;
}

} // namespace pacelet::DayFile
