#include "Core/Inspectors/SpotlightAdvisor.h"

#include "Core/Inspectors/TreeWalk.h"
#include "Core/Support/Files.h"

#include <filesystem>
#include <limits>

namespace pacelet::SpotlightAdvisor {

std::vector<HeavyFolder> heavyFolders(const std::string& home, std::int64_t minimumBytes,
                                      const std::stop_token& stop) {
    std::vector<HeavyFolder> heavy;
    for (const Candidate& candidate : candidates) {
        std::string path = joinedPath(home, candidate.relativePath);
        std::error_code error;
        if (stop.stop_requested() || !std::filesystem::exists(path, error)) {
            continue;
        }
        const std::int64_t bytes = allocatedSize(path, stop);
        if (bytes >= minimumBytes) {
            heavy.push_back({std::move(path), std::string{candidate.label}, bytes});
        }
    }
    return heavy;
}

std::int64_t allocatedSize(const std::string& path, const std::stop_token& stop) {
    constexpr std::int64_t blockSize = 512;
    std::int64_t total = 0;
    walkRegularFiles(path, stop, [&](const struct stat& file) {
        std::int64_t size = 0;
        // A file system that reports nonsense may fill the sum, not wrap it around.
        if (__builtin_mul_overflow(static_cast<std::int64_t>(file.st_blocks), blockSize, &size) ||
            __builtin_add_overflow(total, size, &total)) {
            total = std::numeric_limits<std::int64_t>::max();
        }
    });
    return total;
}

} // namespace pacelet::SpotlightAdvisor
