#pragma once

#include "Hosts/Simulated/Model/World.h"

#include <filesystem>
#include <string>

namespace pacelet::Simulated {

/// The part of the simulated disk that is read and written as real files: a folder of its own in
/// the folder for temporary files, which goes when this does.
class FolderTree {
public:
    /// Writes what the world has on its disk. Throws `std::system_error` when that fails.
    explicit FolderTree(const World& world);
    ~FolderTree();
    FolderTree(const FolderTree&) = delete;
    FolderTree& operator=(const FolderTree&) = delete;

    /// Where "Applications" and "Library" stand, with a slash at its end as in "/".
    std::string root() const { return root_.string() + "/"; }
    std::string home() const { return (root_ / "Users/ann").string(); }
    std::string applicationSupport() const { return home() + "/Library/Application Support"; }

    /// Gives one of the large folders its size on the real disk. Throws `std::system_error`
    /// when there is no room.
    void fill(const LargeFolder& folder) const;

private:
    std::filesystem::path root_;
};

/// Makes a folder impossible to read and write, for every user, as long as it lives: sets it aside
/// and puts a plain file in its place.
class BlockedFolder {
public:
    explicit BlockedFolder(std::filesystem::path path);
    ~BlockedFolder();
    BlockedFolder(BlockedFolder&& other) noexcept;
    BlockedFolder& operator=(BlockedFolder&&) = delete;

private:
    std::filesystem::path path_;
};

} // namespace pacelet::Simulated
