#pragma once

#include "Hosts/Simulated/Model/Random.h"

#include <cstdint>
#include <iterator>

namespace pacelet::torture {

inline bool chance(Simulated::Random& random, int percent) {
    return random.integer(0, 99) < percent;
}

template<typename Items>
auto& anyOf(Simulated::Random& random, Items& items) {
    const auto last = static_cast<std::int64_t>(std::size(items)) - 1;
    return *std::next(std::begin(items), random.integer(0, last));
}

} // namespace pacelet::torture
