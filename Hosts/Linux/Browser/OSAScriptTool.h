#pragma once

#include "Core/Platform/ToolRunner.h"
#include "Hosts/Linux/Browser/BrowserConnections.h"
#include "Hosts/Linux/Systemd/SessionRestart.h"

#include <string>
#include <vector>

/// Answers `osascript` where there is none: runs our scripts on the browsers that are connected,
/// and the request to restart on whoever restarts this machine.
namespace pacelet::Linux::OSAScriptTool {

/// The arguments are "-e" and the script. Holds while the user is asked.
Shell::Output run(const std::vector<std::string>& arguments, BrowserConnections& browsers,
                  const SessionRestart& restart);

} // namespace pacelet::Linux::OSAScriptTool
