#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// What a toolkit's "settings.ini" says of animations; nothing when it does not tell.
std::optional<bool> animationsInSettings(std::string_view text);

/// Whether the desktop asks programs for little motion. The desktop portal's word counts, where one
/// runs; else the toolkit's settings below `configFolder`. A desktop that says nothing likes
/// motion. Waits for the portal for a second at most, so never on the UI thread.
bool prefersReducedMotion(const std::string& configFolder);

} // namespace pacelet::Linux
