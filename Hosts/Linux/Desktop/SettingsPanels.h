#pragma once

#include "Core/Platform/HostAbilities.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"

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

/// What of the settings and for the disk is installed here. Reads files; whether the machine can be
/// restarted is not among it.
HostAbilities desktopAbilities(const DesktopPlaces& places);

} // namespace pacelet::Linux
