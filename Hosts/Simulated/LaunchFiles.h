#pragma once

#include "Hosts/Simulated/Model/World.h"

#include <filesystem>

/// The property lists of installed applications and of everything that starts by itself.
namespace pacelet::Simulated::LaunchFiles {

/// Writes them below `root` and `home`. Throws `std::system_error`.
void write(const World& world, const std::filesystem::path& root,
           const std::filesystem::path& home);

} // namespace pacelet::Simulated::LaunchFiles
