#pragma once

#include <memory>
#include <optional>
#include <string>

namespace pacelet::Linux {

/// A windowing system.
struct ChosenDisplay {
    std::string plugin; ///< its name there
    /// To be held until the plugin is connected, too: a server that starts over when its last
    /// client leaves would meet the plugin while it does.
    std::shared_ptr<void> connection{};
};

/// The windowing system to use, or nothing when no display answers.
/// Looks before it chooses, since a plugin without its display ends the program. What the user has
/// set goes unchecked. X comes first where both are there: on the other one, no program may place
/// its windows, as the panel beside the tray has to.
std::optional<ChosenDisplay> chooseDisplay();

} // namespace pacelet::Linux
