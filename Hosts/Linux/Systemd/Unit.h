#pragma once

#include <cstdint>
#include <string>

namespace pacelet::Linux {

/// A service of systemd that runs.
struct Unit {
    std::string name;     ///< with its ending ".service"
    std::int32_t pid = 0; ///< its main process

    bool operator==(const Unit&) const = default;
};

} // namespace pacelet::Linux
