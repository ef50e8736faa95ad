#include "Hosts/Linux/User/AtomicFile.h"

#include "Core/Support/Descriptor.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace pacelet::Linux {

namespace {

namespace fs = std::filesystem;

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::error_code makeFolders(const fs::path& folder) {
    std::error_code error;
    if (folder.empty() || fs::is_directory(folder, error)) {
        return {};
    }
    if (const auto above = makeFolders(folder.parent_path())) {
        return above;
    }
    return ::mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST ? std::error_code{}
                                                                    : lastError();
}

std::error_code writeThrough(int file, std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t count = ::write(file, contents.data(), contents.size());
        if (count < 0 && errno != EINTR) {
            return lastError();
        }
        contents.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return ::fsync(file) == 0 ? std::error_code{} : lastError();
}

} // namespace

std::error_code replaceFile(const std::string& path, std::string_view contents) {
    const fs::path folder = fs::path{path}.parent_path();
    if (const auto error = makeFolders(folder)) {
        return error;
    }
    std::string temporary = path + ".XXXXXX";
    const Descriptor file{::mkostemp(temporary.data(), O_CLOEXEC)};
    if (!file) {
        return lastError();
    }
    std::error_code error = writeThrough(file.get(), contents);
    if (!error && ::rename(temporary.c_str(), path.c_str()) != 0) {
        error = lastError();
    }
    if (error) {
        ::unlink(temporary.c_str());
        return error;
    }
    // The new name, too, is to outlive a power cut; not every file system can promise that.
    const Descriptor above{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (above) {
        ::fsync(above.get());
    }
    return {};
}

} // namespace pacelet::Linux
