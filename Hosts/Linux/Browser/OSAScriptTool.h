#pragma once

#include "Core/Platform/ToolRunner.h"
#include "Hosts/Linux/Browser/BrowserConnections.h"

#include <string>
#include <vector>

/// Answers `osascript` where there is none: runs our scripts on the browsers that are connected.
namespace pacelet::Linux::OSAScriptTool {

/// The arguments are "-e" and the script.
Shell::Output run(const std::vector<std::string>& arguments, BrowserConnections& browsers);

} // namespace pacelet::Linux::OSAScriptTool
