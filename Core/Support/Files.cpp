#include "Core/Support/Files.h"

#include "Core/Support/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace pacelet {

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// The file at `path`, links followed, and its facts. Not open, with `errno` set, when it is no
/// regular file or cannot be read.
Descriptor openRegular(const std::string& path, struct stat& facts) {
    // Without O_NONBLOCK, opening a pipe that nobody writes to would wait for ever.
    Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    if (file && ::fstat(file.get(), &facts) == 0 && S_ISREG(facts.st_mode)) {
        return file;
    }
    if (file) {
        file.reset();
        errno = EINVAL;
    }
    return file;
}

/// Reads until `contents` is full or the file ends; cuts `contents` to what was read, and to
/// nothing on an error.
std::error_code readInto(int fd, std::string& contents) {
    std::size_t filled = 0;
    while (filled < contents.size()) {
        const ssize_t count = ::read(fd, contents.data() + filled, contents.size() - filled);
        if (count > 0) {
            filled += static_cast<std::size_t>(count);
        } else if (count == 0) {
            break;
        } else if (errno != EINTR) {
            const std::error_code error = lastError();
            contents.clear();
            return error;
        }
    }
    contents.resize(filled);
    return {};
}

} // namespace

std::string joinedPath(std::string_view folder, std::string_view name) {
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path += folder;
    if (!path.ends_with('/')) {
        path += '/';
    }
    path += name;
    return path;
}

std::vector<std::string> sortedNames(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry{folder, error};
    for (; !error && entry != std::filesystem::directory_iterator{}; entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::error_code readFile(const std::string& path, std::size_t maximumBytes, std::string& contents) {
    contents.clear();
    struct stat facts {};
    const Descriptor file = openRegular(path, facts);
    if (!file) {
        return lastError();
    }
    if (facts.st_size > static_cast<off_t>(maximumBytes)) {
        return std::make_error_code(std::errc::file_too_large);
    }
    contents.resize(static_cast<std::size_t>(facts.st_size));
    return readInto(file.get(), contents);
}

std::string readBeginning(const std::string& path, std::size_t bytes) {
    struct stat facts {};
    const Descriptor file = openRegular(path, facts);
    std::string contents(file ? bytes : 0, '\0');
    [[maybe_unused]] const std::error_code unread = readInto(file.get(), contents);
    return contents;
}

std::error_code writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(fd, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return lastError();
        }
    }
    return {};
}

} // namespace pacelet
