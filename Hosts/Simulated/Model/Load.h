#pragma once

#include "Core/Support/Time.h"

#include <limits>

namespace pacelet::Simulated {

/// How busy a process keeps the processor, as a function of the time for which the machine has been
/// awake. Its integral is known in closed form, so that CPU time does not depend on the steps in
/// which virtual time passes.
struct Load {
    double percent = 0; ///< the mean, in percent of one core
    double swing = 0;   ///< how far it goes up and down around the mean, as a part of it: 0 to 1
    Seconds period{60}; ///< of one swing
    double phase = 0;   ///< of the swing at time 0, in radians
    Seconds until{std::numeric_limits<double>::infinity()}; ///< when the work is done
    double percentAfter = 0;                                ///< steady, once it is done

    double at(Seconds time) const;

    /// CPU time used from `from` to `to`.
    Seconds used(Seconds from, Seconds to) const;
};

} // namespace pacelet::Simulated
