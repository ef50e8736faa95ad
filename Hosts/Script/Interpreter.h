#pragma once

#include "Core/Platform/ShellOutput.h"
#include "Hosts/Script/Application.h"

#include <string_view>

/// Runs AppleScript, as far as the language is known here: what a browser's windows and tabs, the
/// restart and the rebuild of the index need.
namespace pacelet::Script {

/// Reads the whole script first, so that a mistake anywhere in it leaves everything as it was. An
/// error while it runs leaves what was done so far. Answers as the system's tool would.
Shell::Output run(System& system, std::string_view script);

} // namespace pacelet::Script
