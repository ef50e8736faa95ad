#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace pacelet {

/// Process identifiers of jobs by label.
using RunningJobs = std::unordered_map<std::string, std::int32_t>;

/// The running jobs of the output of `launchctl list`.
RunningJobs parseLaunchctlList(std::string_view text);

} // namespace pacelet
