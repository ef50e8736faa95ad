#pragma once

#include <cstdint>
#include <string_view>

namespace pacelet {

/// How well a line answers while it is busy.
enum class Responsiveness { high, medium, low };

/// The grade of a figure in round trips per minute: high from 1000, medium from 300.
Responsiveness responsiveness(std::int64_t rpm);

std::string_view rawValue(Responsiveness grade);
std::string_view label(Responsiveness grade);

} // namespace pacelet
