#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace pacelet::gallery {

struct Arguments {
    std::string folder;   ///< where the pictures go
    double scale = 1;     ///< device pixels a point
    std::string only;     ///< pictures whose name begins with this; all when empty
    std::string scenario; ///< every screen on this simulated Mac, or on the machine of this file;
                          ///< empty for the standing set
};

/// A line for the user.
struct Complaint {
    std::string text;
};

/// Reads what stands behind the program's name.
std::variant<Arguments, Complaint> parse(std::span<const std::string_view> words);

} // namespace pacelet::gallery
