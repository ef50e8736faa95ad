#pragma once

#include <array>
#include <cstdint>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// A folder that keeps the search indexer busy.
struct HeavyFolder {
    std::string path; ///< absolute; what a folder is known by in lists
    std::string label;
    std::int64_t bytes = 0; ///< taken on disk

    bool operator==(const HeavyFolder&) const = default;
};

/// Finds the folders that are better left out of the search index. Walks whole trees, so never on
/// the UI thread; a walk that is asked to stop soon ends and answers with what it has got.
namespace SpotlightAdvisor {

struct Candidate {
    std::string_view label;
    std::string_view relativePath; ///< in the home folder
};

/// Huge folders that change fast.
inline constexpr std::array<Candidate, 4> candidates{{
    {"Xcode build data", "Library/Developer/Xcode/DerivedData"},
    {"Docker data", "Library/Containers/com.docker.docker"},
    {"OrbStack data", ".orbstack"},
    {"Parallels virtual machines", "Parallels"},
}};

/// The candidates that exist and take `minimumBytes` or more, in the order of `candidates`.
std::vector<HeavyFolder> heavyFolders(const std::string& home, std::int64_t minimumBytes,
                                      const std::stop_token& stop = {});

/// What the regular files below the folder `path` take on disk, in bytes: allocated blocks, not
/// lengths. Links are not followed, not even one at `path`; a file with several names counts under
/// each of them. What cannot be read counts as empty.
std::int64_t allocatedSize(const std::string& path, const std::stop_token& stop = {});

} // namespace SpotlightAdvisor

} // namespace pacelet
