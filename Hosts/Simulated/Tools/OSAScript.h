#pragma once

#include "Core/Platform/ShellOutput.h"
#include "Hosts/Simulated/Model/World.h"

#include <string_view>

/// Runs an AppleScript against the simulated applications, as far as the language is known here:
/// what a browser's windows and tabs, the restart and the rebuild of the index need.
namespace pacelet::Simulated::OSAScript {

/// Reads the whole script first, so that a mistake anywhere in it leaves everything as it was. An
/// error while it runs leaves what was done so far. Answers as the tool would.
Shell::Output run(World& world, std::string_view script);

} // namespace pacelet::Simulated::OSAScript
