#pragma once

#include "Core/Sampling/Shell.h"

#include <string>
#include <vector>

/// Answers `system_profiler SPHardwareDataType -json` out of `/proc` and `/sys`.
namespace pacelet::Linux::SystemProfilerTool {

/// Status 1 and a sentence on standard error for any other command line. Any thread.
Shell::Output run(const std::vector<std::string>& arguments, const std::string& procFolder,
                  const std::string& sysFolder);

} // namespace pacelet::Linux::SystemProfilerTool
