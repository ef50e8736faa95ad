#include "Core/Sampling/Smoother.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace pacelet::Smoother {

namespace {

/// Sorts through a list of places: moving 8 bytes about is cheaper than moving whole groups.
std::vector<ProcessGroup> busiestFirst(std::vector<ProcessGroup> groups) {
    std::vector<std::size_t> order(groups.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, [&](std::size_t left, std::size_t right) {
        return groups[left].cpuPercent > groups[right].cpuPercent;
    });
    std::vector<ProcessGroup> sorted;
    sorted.reserve(groups.size());
    for (const std::size_t place : order) {
        sorted.push_back(std::move(groups[place]));
    }
    return sorted;
}

} // namespace

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
    return busiestFirst(std::move(latest));
}

} // namespace pacelet::Smoother
