#include "Core/Sampling/AppGrouper.h"

#include "Core/Sampling/SafetyGate.h"
#include "Core/Support/Checked.h"
#include "Core/Support/Text.h"

#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace pacelet::AppGrouper {

namespace {

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>{}(text);
    }
};

/// The groups of a walk so far, found again by bundle path or by pid.
class Folding {
public:
    explicit Folding(std::size_t processes) {
        groups_.reserve(processes);
        byPid_.reserve(processes);
    }

    void add(ProcessUsage usage) {
        const auto app = outermostApp(usage.path);
        ProcessGroup& group = app ? groupOfApp(*app) : groupOfPid(usage.pid);
        group.members.push_back(std::move(usage));
    }

    std::vector<ProcessGroup> take() { return std::move(groups_); }

private:
    ProcessGroup& groupOfApp(std::string_view app) {
        if (const auto known = byApp_.find(app); known != byApp_.end()) {
            return groups_[known->second];
        }
        byApp_.emplace(app, groups_.size());
        ProcessGroup& group = groups_.emplace_back();
        group.id = app;
        group.appPath = app;
        return group;
    }

    ProcessGroup& groupOfPid(std::int32_t pid) {
        const auto [place, isNew] = byPid_.try_emplace(pid, groups_.size());
        if (!isNew) {
            return groups_[place->second];
        }
        ProcessGroup& group = groups_.emplace_back();
        group.id = "pid:" + std::to_string(pid);
        return group;
    }

    std::vector<ProcessGroup> groups_; // in the order of first appearance
    std::unordered_map<std::string, std::size_t, TextHash, std::equal_to<>> byApp_;
    std::unordered_map<std::int32_t, std::size_t> byPid_;
};

/// Fills in what follows from the members.
void complete(ProcessGroup& group, std::uint32_t currentUID) {
    for (const ProcessUsage& member : group.members) {
        group.cpuPercent += member.cpuPercent;
        group.memoryBytes = checkedAdd(group.memoryBytes, member.memoryBytes,
                                       "the memory of a group exceeds 64 bits");
    }
    if (!group.appPath) {
        group.displayName = group.members.front().name;
        return;
    }
    group.displayName = withoutExtension(lastPathComponent(*group.appPath));
    const ProcessUsage& primary = group.primary();
    group.quittable = SafetyGate::canQuit(primary.uid, currentUID, primary.path, group.displayName,
                                          /*isRegularApp=*/true);
}

} // namespace

std::vector<ProcessGroup> group(std::vector<ProcessUsage> usages, std::uint32_t currentUID) {
    Folding folding{usages.size()};
    for (ProcessUsage& usage : usages) {
        folding.add(std::move(usage));
    }
    std::vector<ProcessGroup> groups = folding.take();
    for (ProcessGroup& group : groups) {
        complete(group, currentUID);
    }
    return sorted(std::move(groups), [](const ProcessGroup& left, const ProcessGroup& right) {
        return std::tie(right.cpuPercent, left.displayName) <
               std::tie(left.cpuPercent, right.displayName);
    });
}

} // namespace pacelet::AppGrouper
