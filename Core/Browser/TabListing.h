#pragma once

#include "Core/Browser/BrowserTab.h"

#include <string_view>
#include <vector>

namespace pacelet::TabScript {

/// Reads a listing, whose form TabScript.h tells. What it cannot use it drops: a title that holds a
/// separator costs its own tab only. `appName` is the browser's name, behind which a window's name
/// tells the profile.
std::vector<BrowserWindow> parse(std::string_view listing, std::string_view appName);

} // namespace pacelet::TabScript
