#pragma once

#include "Hosts/Simulated/Model/Random.h"

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace pacelet::torture {

inline bool chance(Simulated::Random& random, int percent) {
    return random.integer(0, 99) < percent;
}

template<typename Items>
auto& anyOf(Simulated::Random& random, Items& items) {
    const auto last = static_cast<std::int64_t>(std::size(items)) - 1;
    return items[static_cast<std::size_t>(random.integer(0, last))];
}

} // namespace pacelet::torture
