#pragma once

#include <tuple>
#include <vector>

namespace pacelet {

/// Rows of examples, whose fields a loop names: `for (const auto& [given, expected] : rows)`.
template<typename... Fields>
using Table = std::vector<std::tuple<Fields...>>;

} // namespace pacelet
