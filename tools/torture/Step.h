#pragma once

#include "Core/Support/Time.h"

#include <cstdint>
#include <vector>

namespace pacelet::torture {

/// What somebody does, or what happens to the machine.
enum class Verb {
    press,   ///< something that can be pressed, by pointer or key
    speak,   ///< presses, ticks or moves something as a screen reader does
    key,     ///< a key or a shortcut
    type,    ///< words
    point,   ///< a click or a turn of the wheel, anywhere
    window,  ///< opens a window, closes it, minimises it, changes its size
    leave,   ///< goes away for a while
    machine, ///< work comes, grows, moves, goes
    fault,   ///< something fails from now on
    mend,    ///< nothing fails any more
    sleep,   ///< the machine sleeps
    clock,   ///< the wall clock is set
};

/// It draws all that it leaves open from its own number, so that others can be taken away around
/// it.
struct Step {
    Verb verb{};
    std::uint64_t draw = 0;
    Seconds lasts{0}; ///< until the next one
};

/// Two virtual days; the same for one seed, always.
std::vector<Step> stepsOf(std::uint64_t seed);

} // namespace pacelet::torture
