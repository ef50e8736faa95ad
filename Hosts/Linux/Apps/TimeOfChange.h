#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace pacelet::Linux {

/// Time of a file's or folder's last change in nanoseconds; nothing when there is none.
inline std::optional<std::int64_t> timeOfChange(const std::string& path) {
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) {
        return std::nullopt;
    }
    return facts.st_mtim.tv_sec * nanoseconds + facts.st_mtim.tv_nsec;
}

} // namespace pacelet::Linux
