#pragma once

#include "Core/Platform/ShellOutput.h"
#include "Hosts/Simulated/Model/World.h"

#include <string>

/// What the Mac's own tools print, in their own formats.
namespace pacelet::Simulated::ToolTexts {

/// `ps -axo pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm=`
std::string processes(const World& world);

/// `ps -axo pid=,rss=,args=`
std::string commandLines(const World& world);

/// `launchctl list`
std::string launchJobs(const World& world);

/// `networkQuality -c -M 25`; fails without a connection.
Shell::Output networkQuality(const World& world);

/// `nettop -P -d -L 2 -s 1 -x -J bytes_in,bytes_out`
std::string traffic(const World& world);

/// `system_profiler SPHardwareDataType -json`
std::string hardware(const World& world);

} // namespace pacelet::Simulated::ToolTexts
