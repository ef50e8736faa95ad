#pragma once

#include <optional>
#include <string_view>

namespace pacelet {

/// The application bundle that holds the executable at `path`: everything up to the first ".app/",
/// or the whole path when it ends in ".app". A view into `path`.
std::optional<std::string_view> outermostApp(std::string_view path);

} // namespace pacelet
