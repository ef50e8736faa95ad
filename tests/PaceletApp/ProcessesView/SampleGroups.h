#pragma once

#include "PaceletApp/ProcessesView/ProcessEntry.h"
#include "tests/PaceletApp/Support/SampleGroup.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace pacelet {

/// Groups to list, with what is known of them.
struct SampleGroups {
    std::vector<ProcessGroup> groups;
    std::map<std::string, Explanation> explanations;

    ProcessGroup& add(const std::string& name, double cpu = 0, std::int64_t memory = 0,
                      Verdict verdict = Verdict::review,
                      const std::vector<std::string>& helpers = {}) {
        std::vector<ProcessUsage> members{
            sampleUsage(static_cast<std::int32_t>(groups.size()) + 1, name, cpu, memory)};
        for (const std::string& helper : helpers) {
            members.push_back(sampleUsage(0, helper));
        }
        const ProcessGroup group = sampleGroup(members);
        explanations[group.id].verdict = verdict;
        return groups.emplace_back(group);
    }

    std::vector<ProcessEntry> entries() const {
        return allEntries(std::make_shared<const ProcessGroups>(groups),
                          [this](const ProcessGroup& group) {
                              const auto found = explanations.find(group.id);
                              return found != explanations.end()
                                         ? std::make_shared<const Explanation>(found->second)
                                         : nullptr;
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
