#include "Core/Sampling/Smoother.h"

#include <algorithm>
#include <functional>

namespace pacelet::Smoother {

CPUByID cpuByID(std::span<const ProcessGroup> groups) {
    CPUByID byID;
    byID.reserve(groups.size());
    for (const ProcessGroup& group : groups) {
        byID[group.id] += group.cpuPercent;
    }
    return byID;
}

std::vector<ProcessGroup> average(std::vector<ProcessGroup> latest,
                                  std::span<const CPUByID> history) {
    if (history.empty()) {
        return latest;
    }
    for (ProcessGroup& group : latest) {
        double sum = 0;
        for (const CPUByID& tick : history) {
            const auto found = tick.find(group.id);
            sum += found == tick.end() ? 0 : found->second;
        }
        group.cpuPercent = sum / static_cast<double>(history.size());
    }
    std::ranges::stable_sort(latest, std::greater{}, &ProcessGroup::cpuPercent);
    return latest;
}

} // namespace pacelet::Smoother
