#pragma once

#include <string_view>

namespace pacelet {

/// The category of the loop's log messages.
inline constexpr std::string_view monitorLogCategory = "monitor";

} // namespace pacelet
