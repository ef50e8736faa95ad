#pragma once

#include "Hosts/Linux/X11/Connection.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace pacelet::Linux::X11 {

/// A display that shows a picture.
struct Display {
    std::uint32_t id = 0;             ///< of its CRTC
    std::int64_t currentWidth = 0;    ///< of its mode, in pixels before any rotation
    std::vector<std::int64_t> widths; ///< of all modes of its first output

    bool operator==(const Display&) const = default;
};

/// Nothing when the server cannot tell.
std::optional<std::vector<Display>> readDisplays(const Connection& connection);

} // namespace pacelet::Linux::X11
