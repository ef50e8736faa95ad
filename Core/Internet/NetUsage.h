#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace pacelet {

/// The traffic of one process, or of one application.
struct NetUsage {
    std::int32_t pid = 0;
    std::string name;          ///< as the tool prints it, which may cut it short
    double bytesInPerSec = 0;  ///< received
    double bytesOutPerSec = 0; ///< sent

    double total() const { return bytesInPerSec + bytesOutPerSec; }

    bool operator==(const NetUsage&) const = default;
};

/// A rate in bytes per second as a text: "1.2 MB/s". It must be finite and fit 64 bits.
std::string byteRate(double bytesPerSecond);

/// The name of the application that holds a process, or nothing.
using AppName = std::function<std::optional<std::string>(std::int32_t pid)>;

} // namespace pacelet
