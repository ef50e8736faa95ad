#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// A folder of an icon theme, and the sizes in pixels for which its pictures are meant.
struct IconFolder {
    std::string path; ///< below the theme's folder
    int smallest = 0;
    int largest = 0;

    /// 0 when it is meant for `size`, else how far it is off.
    int distance(int size) const;

    bool operator==(const IconFolder&) const = default;
};

struct IconTheme {
    std::vector<IconFolder> folders;   ///< in the order of the file
    std::vector<std::string> inherits; ///< themes that are asked next

    bool operator==(const IconTheme&) const = default;
};

/// Reads an `index.theme`. Folders without a size are left out.
IconTheme parseIconTheme(std::string_view text);

} // namespace pacelet::Linux
