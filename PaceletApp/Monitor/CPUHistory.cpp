#include "PaceletApp/Monitor/CPUHistory.h"

namespace pacelet {

void addPoint(CPUHistory& history, const CPUPoint& point) {
    history.push_back(point);
    std::erase_if(history,
                  [&](const CPUPoint& old) { return point.date - old.date > cpuHistoryLength; });
}

} // namespace pacelet
