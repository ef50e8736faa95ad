#pragma once

#include "Core/Platform/Workspace.h"

#include <string_view>

namespace pacelet::Simulated::AppIcon {

/// A rounded tile with the first letter of the name, in a colour that the name always gets. SVG.
EncodedImage tile(std::string_view name, int size);

} // namespace pacelet::Simulated::AppIcon
