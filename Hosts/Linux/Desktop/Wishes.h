#pragma once

#include "Core/Platform/DesktopWishes.h"

#include <optional>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// What a toolkit's "settings.ini" says of animations; nothing when it does not tell.
std::optional<bool> animationsInSettings(std::string_view text);

/// Whether it names a theme of high contrast; nothing when it does not tell.
std::optional<bool> contrastInSettings(std::string_view text);

/// What the desktop asks of programs. The desktop portal's word counts, where one runs; else the
/// toolkit's settings below `configFolder`. May wait for the portal for two seconds, so never on
/// the UI thread.
DesktopWishes wishesOfDesktop(const std::string& configFolder);

} // namespace pacelet::Linux
