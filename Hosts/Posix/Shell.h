#pragma once

#include "Core/Platform/ShellOutput.h"

#include <string>
#include <vector>

/// A small synchronous runner of command-line tools.
namespace pacelet::Shell {

/// Runs the program at the absolute path `executable` to its end and collects what it wrote. Blocks
/// with no time limit, so never on the UI thread; safe to call from many threads at a time. The
/// child inherits environment, working directory and standard input, and no other descriptor.
/// Throws `LaunchError`, also where the
/// system does not tell how the child ended because SIGCHLD is ignored.
Output run(const std::string& executable, const std::vector<std::string>& arguments);

} // namespace pacelet::Shell
