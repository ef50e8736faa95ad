#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// The program of this desktop's own settings that shows what the Mac's deep link `url` means, with
/// its arguments; more than one where the program has had several names. Empty when `url` is no
/// such link, or this desktop (as in XDG_CURRENT_DESKTOP) has no such panel.
std::vector<std::vector<std::string>> settingsCommands(std::string_view url,
                                                       std::span<const std::string> desktops);

} // namespace pacelet::Linux
