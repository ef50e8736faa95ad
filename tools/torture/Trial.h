#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace pacelet::torture {

/// The steps of a seed that are taken, by their places among all of them.
using Places = std::vector<std::size_t>;

/// How often each kind of control that was seen was pressed.
using Presses = std::map<std::string, int>;

/// How a seed was borne, in a process of its own.
struct Trial {
    std::uint64_t seed = 0;
    Places places;     ///< the steps that were taken
    std::string fault; ///< which invariant broke, or how the program ended; empty when all held
    std::string told;  ///< what happened, a line a step
    Presses presses;   ///< when all held
};

/// Takes these steps of the seed in this process, tells each of them on standard output, and gives
/// the exit status.
int play(std::uint64_t seed, const Places& places);

/// All steps of a seed.
Places allPlaces(std::uint64_t seed);

/// Has `program`, which is this one, play them in a process of its own.
Trial tryOut(const std::string& program, std::uint64_t seed, Places places);

/// The same fault in as few steps as can be found.
Trial shortest(const std::string& program, Trial trial);

/// "3,5,6", and back. What is no number is left out.
std::string textOf(const Places& places);
Places placesFrom(std::string_view text);

} // namespace pacelet::torture
