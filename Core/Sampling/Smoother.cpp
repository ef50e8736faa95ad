#include "Core/Sampling/Smoother.h"

#include <utility>

namespace pacelet::Smoother {

CPUByID cpuByID(std::span<const ProcessGroup> groups) {
    CPUByID byID;
    byID.reserve(groups.size());
    for (const ProcessGroup& group : groups) {
        byID[group.id] += group.cpuPercent;
    }
    return byID;
}

History extended(History history, CPUByID newest) {
    history.push_back(std::make_shared<const CPUByID>(std::move(newest)));
    if (history.size() > window) {
        history.erase(history.begin());
    }
    return history;
}

std::vector<ProcessGroup> average(std::vector<ProcessGroup> latest, const History& history) {
    if (history.empty()) {
        return latest;
    }
    for (ProcessGroup& group : latest) {
        double sum = 0;
        for (const auto& tick : history) {
            const auto found = tick->find(group.id);
            sum += found == tick->end() ? 0 : found->second;
        }
        group.cpuPercent = sum / static_cast<double>(history.size());
    }
    return sorted(std::move(latest), [](const ProcessGroup& left, const ProcessGroup& right) {
        return left.cpuPercent > right.cpuPercent;
    });
}

} // namespace pacelet::Smoother
