#pragma once

#include "PaceletApp/ProcessesView/ProcessEntry.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace pacelet {

/// Groups to list, with what is known of them.
struct SampleGroups {
    std::vector<ProcessGroup> groups;
    std::map<std::string, Explanation> explanations;

    ProcessGroup& add(std::string name, double cpu = 0, std::int64_t memory = 0,
                      Verdict verdict = Verdict::review, std::vector<std::string> helpers = {}) {
        ProcessGroup group;
        group.id = "pid:" + std::to_string(groups.size() + 1);
        group.cpuPercent = cpu;
        group.memoryBytes = memory;
        helpers.insert(helpers.begin(), name);
        for (std::string& member : helpers) {
            group.members.emplace_back().name = std::move(member);
        }
        group.displayName = std::move(name);
        explanations[group.id].verdict = verdict;
        return groups.emplace_back(std::move(group));
    }

    std::vector<ProcessEntry> entries() const {
        return allEntries(groups, [this](const ProcessGroup& group) -> const Explanation* {
            const auto found = explanations.find(group.id);
            return found != explanations.end() ? &found->second : nullptr;
        });
    }

    /// Names of the rows that the query leaves, in order, with a blank between them.
    std::string shown(const ProcessQuery& query) const {
        std::string names;
        for (const ProcessEntry& entry : visibleEntries(entries(), query)) {
            names += (names.empty() ? "" : " ") + entry.group->displayName;
        }
        return names;
    }
};

} // namespace pacelet
