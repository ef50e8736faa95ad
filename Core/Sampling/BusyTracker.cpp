#include "Core/Sampling/BusyTracker.h"

namespace pacelet {

std::optional<TimePoint> BusyTracker::update(double spotlightCPU, TimePoint now) {
    if (spotlightCPU < busyLoad) {
        busySince.reset();
    } else if (!busySince) {
        busySince = now;
    }
    return busySince;
}

} // namespace pacelet
