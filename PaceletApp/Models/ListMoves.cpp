#include "PaceletApp/Models/ListMoves.h"

#include <algorithm>

namespace pacelet {

std::vector<bool> longestRisingPart(std::span<const std::size_t> values) {
    constexpr auto none = static_cast<std::size_t>(-1);
    // tails[n] is the place of the smallest value that ends a rising part of length n + 1.
    std::vector<std::size_t> tails;
    std::vector<std::size_t> before(values.size(), none);
    for (std::size_t place = 0; place < values.size(); ++place) {
        const auto tail =
            std::lower_bound(tails.begin(), tails.end(), values[place],
                             [&](std::size_t at, std::size_t value) { return values[at] < value; });
        if (tail != tails.begin()) {
            before[place] = *std::prev(tail);
        }
        if (tail == tails.end()) {
            tails.push_back(place);
        } else {
            *tail = place;
        }
    }
    std::vector<bool> marked(values.size(), false);
    for (std::size_t at = tails.empty() ? none : tails.back(); at != none; at = before[at]) {
        marked[at] = true;
    }
    return marked;
}

} // namespace pacelet
