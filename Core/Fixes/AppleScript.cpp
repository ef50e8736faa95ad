#include "Core/Fixes/AppleScript.h"

#include "Core/Support/Text.h"

namespace pacelet::AppleScript {

Shell::Output run(ToolRunner& tools, const std::string& source) {
    return tools.run("/usr/bin/osascript", {"-e", source});
}

std::optional<std::int64_t> errorNumber(std::string_view message) {
    for (;;) {
        const std::size_t open = message.find('(');
        if (open == std::string_view::npos) {
            return std::nullopt;
        }
        message.remove_prefix(open + 1);
        const std::size_t sign = message.starts_with('-') ? 1 : 0;
        const std::size_t end = message.find_first_not_of("0123456789", sign);
        if (end != std::string_view::npos && end > sign && message[end] == ')') {
            return parseInteger<std::int64_t>(message.substr(0, end));
        }
    }
}

} // namespace pacelet::AppleScript
