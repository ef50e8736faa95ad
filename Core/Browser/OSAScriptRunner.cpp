#include "Core/Browser/OSAScriptRunner.h"

#include "Core/Fixes/AppleScript.h"
#include "Core/Support/Text.h"

namespace pacelet {

std::string OSAScriptRunner::run(const std::string& script) {
    const Shell::Output output = AppleScript::run(tools_, script);
    if (output.status != 0) {
        throw error(output.stderr);
    }
    // The tool ends its result with a line feed; the separators of a listing stay.
    return std::string{trimmed(output.stdout, "\r\n")};
}

BrowserError OSAScriptRunner::error(std::string_view standardError) {
    constexpr std::string_view notAuthorized = "(-1743)";
    constexpr std::string_view applicationNotRunning = "(-600)";
    if (standardError.find(notAuthorized) != std::string_view::npos) {
        return BrowserError::notPermitted();
    }
    if (standardError.find(applicationNotRunning) != std::string_view::npos) {
        return BrowserError::notRunning();
    }
    return BrowserError::failed(std::string{trimmed(standardError)});
}

} // namespace pacelet
