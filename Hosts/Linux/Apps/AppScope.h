#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// The desktop ids that the unit in `/proc/<pid>/cgroup` may stand for, the likeliest first; empty
/// when the process runs in no application's scope or service. A unit is named
/// `app-<launcher>-<desktop id>-<random>.scope` or `app-<launcher>-<desktop id>@<random>.service`,
/// where the launcher and the random part may be missing, and not everybody escapes the hyphens in
/// the id: hence more than one reading.
std::vector<std::string> appScopeIDs(std::string_view cgroup);

/// A unit's name as it was before systemd escaped it, `\x2d` for a hyphen and so on.
std::string unescapedUnit(std::string_view escaped);

/// The service in `/proc/<pid>/cgroup`, without its ending; empty for a process in none.
std::string_view serviceUnit(std::string_view cgroup);

} // namespace pacelet::Linux
