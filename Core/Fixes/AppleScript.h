#pragma once

#include "Core/Platform/ToolRunner.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The system's script tool.
namespace pacelet::AppleScript {

/// Runs `source` to its end; a prompt that it brings up may hold it for as long as the user likes.
/// Throws `LaunchError` when the tool cannot be started.
Shell::Output run(ToolRunner& tools, const std::string& source);

/// The first number in parentheses, which is how the tool ends its message: "… canceled. (-128)".
/// Nothing when there is none, or when that number does not fit.
std::optional<std::int64_t> errorNumber(std::string_view message);

} // namespace pacelet::AppleScript
