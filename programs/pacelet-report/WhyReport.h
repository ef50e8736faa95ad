#pragma once

#include "Core/Sampling/ProcessGroup.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace pacelet::report {

/// Why a process stands where it does, in a sentence; nothing for one that is not known any more.
using ReasonOf = std::function<std::optional<std::string_view>(const ProcessUsage&)>;

/// A paragraph for each group: what it is called, and for each of its processes the reason for
/// which it belongs there. Processes of one name and reason are told once, with their number.
std::string renderWhy(std::span<const ProcessGroup> groups, const ReasonOf& reasonOf);

} // namespace pacelet::report
