#pragma once

#include "Core/Support/Text.h"

#include <string_view>

namespace pacelet::Linux {

/// Calls `visit(group, key, value)` for each line "key=value" behind a line "[group]"; comments and
/// other lines are passed over. The views point into `text`; blanks around key and value are gone.
template<typename Visitor>
void forEachKey(std::string_view text, Visitor&& visit) {
    std::string_view group;
    forEachLine(text, [&](std::string_view line) {
        line = trimmed(line);
        const std::size_t equals = line.find('=');
        if (line.starts_with('[') && line.ends_with(']')) {
            group = line.substr(1, line.size() - 2);
        } else if (!group.empty() && !line.starts_with('#') && equals != line.npos) {
            visit(group, trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
        }
    });
}

} // namespace pacelet::Linux
