#include "Core/Inspectors/TreeWalk.h"

#include "Core/Support/Descriptor.h"

#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <vector>

namespace pacelet {

namespace {

/// Folders this far down are closed while the walk is below them, and are found again by "..".
constexpr std::size_t keptOpen = 32;

using Stream = std::unique_ptr<DIR, int (*)(DIR*)>;

Descriptor openFolder(int parent, const char* name) {
    return Descriptor{
        ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)};
}

/// A folder on the way from the top to where the walk is.
struct Level {
    Descriptor folder; ///< not open while a deep walk is below it
    dev_t device = 0;
    ino_t inode = 0;
    std::string pending; ///< names of the folders in it still to be visited, each ended by a NUL

    bool isAt(int fd) const {
        struct stat facts {};
        return ::fstat(fd, &facts) == 0 && facts.st_dev == device && facts.st_ino == inode;
    }

    std::string takePending() {
        const std::size_t begin = pending.rfind('\0', pending.size() - 2) + 1;
        std::string name = pending.c_str() + begin;
        pending.resize(begin);
        return name;
    }
};

class Walk {
public:
    Walk(const std::stop_token& stop, const std::function<void(const struct stat&)>& visit)
        : stop_{stop},
          visit_{visit} {}

    void run(const std::string& path) {
        enter(openFolder(AT_FDCWD, path.c_str()));
        while (!levels_.empty() && !stop_.stop_requested()) {
            Level& level = levels_.back();
            if (level.pending.empty() || !level.folder) {
                leave();
                continue;
            }
            const std::string name = level.takePending();
            enter(openFolder(level.folder.get(), name.c_str()));
        }
    }

private:
    /// Makes `folder` the level that the walk is in: visits its files, notes its folders.
    void enter(Descriptor folder) {
        struct stat facts {};
        if (!folder || ::fstat(folder.get(), &facts) != 0) {
            return;
        }
        Level level;
        level.device = facts.st_dev;
        level.inode = facts.st_ino;
        read(folder.get(), level);
        level.folder = std::move(folder);
        if (levels_.size() > keptOpen) {
            levels_.back().folder.reset();
        }
        levels_.push_back(std::move(level));
    }

    /// Goes back to the level above. One that was closed is opened through the present one; should
    /// that have been moved meanwhile, the rest of the closed levels is passed over.
    void leave() {
        const Descriptor left = std::move(levels_.back().folder);
        levels_.pop_back();
        if (levels_.empty() || levels_.back().folder || !left) {
            return;
        }
        Descriptor above = openFolder(left.get(), "..");
        if (above && levels_.back().isAt(above.get())) {
            levels_.back().folder = std::move(above);
        }
    }

    void read(int folder, Level& level) {
        // The stream closes its own descriptor, and the level needs one.
        Descriptor own{::fcntl(folder, F_DUPFD_CLOEXEC, 0)};
        const Stream stream{own ? ::fdopendir(own.get()) : nullptr, ::closedir};
        if (!stream) {
            return;
        }
        own.release();
        while (const dirent* entry = ::readdir(stream.get())) {
            if (stop_.stop_requested()) {
                return;
            }
            take(folder, *entry, level);
        }
    }

    void take(int folder, const dirent& entry, Level& level) {
        if (std::strcmp(entry.d_name, ".") == 0 || std::strcmp(entry.d_name, "..") == 0) {
            return;
        }
        struct stat facts {};
        const bool isFolder = entry.d_type == DT_DIR;
        if (!isFolder && ::fstatat(folder, entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) != 0) {
            return;
        }
        if (isFolder || S_ISDIR(facts.st_mode)) {
            level.pending.append(entry.d_name).push_back('\0');
        } else if (S_ISREG(facts.st_mode)) {
            visit_(facts);
        }
    }

    const std::stop_token& stop_;
    const std::function<void(const struct stat&)>& visit_;
    std::vector<Level> levels_;
};

} // namespace

void walkRegularFiles(const std::string& path, const std::stop_token& stop,
                      const std::function<void(const struct stat&)>& visit) {
    Walk{stop, visit}.run(path);
}

} // namespace pacelet
