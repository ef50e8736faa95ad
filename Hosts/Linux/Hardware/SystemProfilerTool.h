#pragma once

#include "Core/Platform/ShellOutput.h"

#include <cstdint>
#include <string>
#include <vector>

/// Answers `system_profiler SPHardwareDataType -json` out of `/proc` and `/sys`. The memory is
/// handed in, so that all who ask for it are told the same.
namespace pacelet::Linux::SystemProfilerTool {

/// Status 1 and a sentence on standard error for any other command line. Any thread.
Shell::Output run(const std::vector<std::string>& arguments, const std::string& procFolder,
                  const std::string& sysFolder, std::int64_t memoryBytes);

} // namespace pacelet::Linux::SystemProfilerTool
