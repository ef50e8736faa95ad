#pragma once

#include <optional>
#include <string>

namespace pacelet::Linux {

/// The windowing system to use, by the name of its plugin, or nothing when no display answers.
/// Looks before it chooses, since a plugin without its display ends the program. What the user has
/// set goes unchecked. X comes first where both are there: on the other one, no program may place
/// its windows, as the panel beside the tray has to.
std::optional<std::string> chooseDisplay();

} // namespace pacelet::Linux
