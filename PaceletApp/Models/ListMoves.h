#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace pacelet {

/// Marks a longest strictly rising part of `values`: what it marks may stay where it is while all
/// else moves around it. Takes n log n steps.
std::vector<bool> longestRisingPart(std::span<const std::size_t> values);

} // namespace pacelet
