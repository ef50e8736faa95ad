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

/// Reads until `contents` is full or the file ends; cuts `contents` to what was read.
std::error_code readInto(int fd, std::string& contents) {
    std::size_t filled = 0;
    while (filled < contents.size()) {
        const ssize_t count = ::read(fd, contents.data() + filled, contents.size() - filled);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return lastError();
        }
        if (count == 0) {
            break;
        }
        filled += static_cast<std::size_t>(count);
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
    // Without O_NONBLOCK, opening a pipe that nobody writes to would wait for ever.
    const Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    struct stat facts {};
    if (!file || ::fstat(file.get(), &facts) != 0) {
        return lastError();
    }
    if (!S_ISREG(facts.st_mode)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    if (facts.st_size > static_cast<off_t>(maximumBytes)) {
        return std::make_error_code(std::errc::file_too_large);
    }
    contents.resize(static_cast<std::size_t>(facts.st_size));
    const std::error_code error = readInto(file.get(), contents);
    if (error) {
        contents.clear();
    }
    return error;
}

} // namespace pacelet
