#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace pacelet::Linux {

/// A service that systemd has loaded.
struct Unit {
    std::string name;                ///< with its ending ".service"
    std::optional<std::int32_t> pid; ///< its main process while it runs
    std::int32_t status = 0;         ///< with which its main process ended last

    bool operator==(const Unit&) const = default;
};

} // namespace pacelet::Linux
