#include "Hosts/Simulated/FolderTree.h"

#include "Hosts/Simulated/LaunchFiles.h"
#include "Hosts/Simulated/UsageFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace pacelet::Simulated {

namespace {

namespace fs = std::filesystem;

fs::path makeTemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "pacelet-mac-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::system_error{errno, std::generic_category(), "no temporary folder"};
    }
    return pattern;
}

fs::path setAside(const fs::path& path) {
    return path.string() + ".set-aside";
}

/// Takes `bytes` of the disk for the file, without writing them.
void allocate(const fs::path& file, std::int64_t bytes) {
    fs::create_directories(file.parent_path());
    const int descriptor = ::open(file.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        throw std::system_error{errno, std::generic_category(), file.string()};
    }
#ifdef __APPLE__
    fstore_t place{F_ALLOCATEALL, F_PEOFPOSMODE, 0, bytes, 0};
    const bool isTaken =
        ::fcntl(descriptor, F_PREALLOCATE, &place) != -1 && ::ftruncate(descriptor, bytes) == 0;
    const int error = isTaken ? 0 : errno;
#else
    const int error = ::posix_fallocate(descriptor, 0, bytes);
#endif
    ::close(descriptor);
    if (error != 0) {
        throw std::system_error{error, std::generic_category(), file.string()};
    }
}

} // namespace

FolderTree::FolderTree(const World& world)
    : root_{makeTemporaryFolder()} {
    fs::create_directories(applicationSupport());
    LaunchFiles::write(world, root_, home());
    for (const LargeFolder& folder : world.largeFolders) {
        fs::create_directories(fs::path{home()} / folder.path);
    }
    if (world.pastUsage) {
        UsageFiles::write(world, fs::path{applicationSupport()} / "Pacelet");
    }
}

FolderTree::~FolderTree() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

void FolderTree::fill(const LargeFolder& folder) const {
    allocate(fs::path{home()} / folder.path / "Data.img", folder.bytes);
}

BlockedFolder::BlockedFolder(fs::path path)
    : path_{std::move(path)} {
    std::error_code absent;
    fs::rename(path_, setAside(path_), absent);
    fs::create_directories(path_.parent_path());
    std::ofstream{path_} << '\n';
}

BlockedFolder::BlockedFolder(BlockedFolder&& other) noexcept
    : path_{std::exchange(other.path_, fs::path{})} {}

BlockedFolder::~BlockedFolder() {
    if (path_.empty()) {
        return;
    }
    std::error_code ignored;
    fs::remove(path_, ignored);
    fs::rename(setAside(path_), path_, ignored);
}

} // namespace pacelet::Simulated
