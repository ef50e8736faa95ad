#pragma once

#include "Core/Browser/BrowserError.h"
#include "Core/Browser/ScriptRunner.h"
#include "Core/Platform/ToolRunner.h"

#include <string>
#include <string_view>

namespace pacelet {

/// Runs AppleScript sources through the system's script tool.
class OSAScriptRunner final : public ScriptRunner {
public:
    explicit OSAScriptRunner(ToolRunner& tools)
        : tools_{tools} {}

    /// Waits as long as it takes, the system's permission dialog included. Throws `BrowserError`
    /// when the script fails, and `LaunchError` when the tool cannot be started.
    std::string run(const std::string& script) override;

    /// What the tool's error output says. A missing permission outweighs everything else.
    static BrowserError error(std::string_view standardError);

private:
    ToolRunner& tools_;
};

} // namespace pacelet
