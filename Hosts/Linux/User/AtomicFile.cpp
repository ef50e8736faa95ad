#include "Hosts/Linux/User/AtomicFile.h"

#include "Core/Support/Descriptor.h"
#include "Core/Support/Files.h"

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

/// Where the links at `path` lead, whether or not something is there. A ring of links leads to one
/// of them.
fs::path targetOf(fs::path path) {
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int link = 0; link < mostLinks && fs::is_symlink(path, error); ++link) {
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    return path;
}

/// Fails where something other than a regular file stands.
std::error_code checkReplaceable(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path, error);
    return fs::exists(status) && !fs::is_regular_file(status)
               ? std::make_error_code(std::errc::invalid_argument)
               : std::error_code{};
}

/// The new name, too, is to outlive a power cut; not every file system can promise that.
void storeNames(const fs::path& folder) {
    const Descriptor opened{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (opened) {
        ::fsync(opened.get());
    }
}

} // namespace

std::error_code replaceFile(const std::string& path, std::string_view contents, Outlives what) {
    const fs::path target = targetOf(path);
    if (const auto error = makeFolders(target.parent_path())) {
        return error;
    }
    if (const auto error = checkReplaceable(target)) {
        return error;
    }
    std::string temporary = target.string() + ".XXXXXX";
    const Descriptor file{::mkostemp(temporary.data(), O_CLOEXEC)};
    if (!file) {
        return lastError();
    }
    std::error_code error = writeAll(file.get(), contents);
    if (!error && what == Outlives::powerCut && ::fsync(file.get()) != 0) {
        error = lastError();
    }
    if (!error && ::rename(temporary.c_str(), target.c_str()) != 0) {
        error = lastError();
    }
    if (error) {
        ::unlink(temporary.c_str());
    } else if (what == Outlives::powerCut) {
        storeNames(target.parent_path());
    }
    return error;
}

std::error_code setFileAside(const std::string& path) {
    constexpr int mostNames = 100;
    const std::string target = targetOf(path).string();
    if (const auto error = checkReplaceable(target)) {
        return error;
    }
    for (int number = 1; number < mostNames; ++number) {
        const std::string aside =
            target + ".flawed" + (number == 1 ? "" : '-' + std::to_string(number));
        if (::renameat2(AT_FDCWD, target.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) == 0 ||
            errno == ENOENT) {
            return {};
        }
        if (errno != EEXIST) {
            return lastError();
        }
    }
    return std::make_error_code(std::errc::file_exists);
}

} // namespace pacelet::Linux
