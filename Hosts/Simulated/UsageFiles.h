#pragma once

#include "Hosts/Simulated/Model/World.h"

#include <filesystem>

/// A usage history as the program itself would have written it in the days before.
namespace pacelet::Simulated::UsageFiles {

/// Writes one file a UTC day, up to the day on which the world begins. Throws `std::system_error`.
void write(const World& world, const std::filesystem::path& folder);

} // namespace pacelet::Simulated::UsageFiles
