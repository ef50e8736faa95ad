#pragma once

#include "Core/Platform/ShellOutput.h"

#include <string>
#include <vector>

namespace pacelet {

/// Runs the system's command-line tools. On a Mac this is `Shell::run` itself; every other host
/// answers the same command lines with text in the Mac's format. Blocks; safe from any thread.
class ToolRunner {
public:
    virtual ~ToolRunner() = default;

    /// Runs the tool at the absolute path `executable` to its end. Throws `LaunchError` when it
    /// cannot be started; a status other than 0 is no failure here.
    virtual Shell::Output run(const std::string& executable,
                              const std::vector<std::string>& arguments) = 0;
};

} // namespace pacelet
