#include "Core/Sampling/MemoryReader.h"

#include <unordered_set>
#include <utility>

namespace pacelet::MemoryReader {

std::optional<std::int64_t> footprint(Kernel& kernel, std::int32_t pid) {
    return kernel.physFootprint(pid);
}

CPUMeter::FootprintReader ownProcesses(Kernel& kernel, const Snapshot& snapshot,
                                       std::uint32_t uid) {
    std::unordered_set<std::int32_t> own;
    own.reserve(snapshot.processes.size());
    for (const ProcessSample& sample : snapshot.processes) {
        if (sample.uid == uid) {
            own.insert(sample.pid);
        }
    }
    return [&kernel, own = std::move(own)](std::int32_t pid) -> std::optional<std::int64_t> {
        return own.contains(pid) ? footprint(kernel, pid) : std::nullopt;
    };
}

} // namespace pacelet::MemoryReader
