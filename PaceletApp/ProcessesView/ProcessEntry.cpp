#include "PaceletApp/ProcessesView/ProcessEntry.h"

#include "PaceletApp/Support/QtText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pacelet {

namespace {

std::shared_ptr<const ProcessGroup> makeKernelGroup() {
    ProcessUsage kernel;
    kernel.user = "root";
    kernel.path = kernel.name = kernelID;
    ProcessGroup group;
    group.id = group.displayName = kernelID;
    group.members = {kernel};
    return std::make_shared<const ProcessGroup>(std::move(group));
}

bool holds(std::string_view text, const QString& needle) {
    return qtText(text).toLower().contains(needle);
}

} // namespace

std::shared_ptr<const ProcessGroup> kernelGroup() {
    static const auto group = makeKernelGroup();
    return group;
}

std::vector<ProcessEntry> allEntries(const std::shared_ptr<const ProcessGroups>& groups,
                                     const ExplanationSource& explanation) {
    std::vector<ProcessEntry> entries;
    entries.reserve(groups->size() + 1);
    const auto add = [&](std::shared_ptr<const ProcessGroup> group) {
        auto known = explanation(*group);
        const Verdict verdict = known ? known->verdict : Verdict::review;
        entries.push_back({std::move(group), std::move(known), verdict});
    };
    add(kernelGroup());
    for (const ProcessGroup& group : *groups) {
        add(partOf(groups, group));
    }
    return entries;
}

bool matches(const ProcessEntry& entry, const QString& needle) {
    if (needle.isEmpty() || holds(entry.group->displayName, needle)) {
        return true;
    }
    return std::ranges::any_of(
               entry.group->members,
               [&](const ProcessUsage& member) { return holds(member.name, needle); }) ||
           (entry.explanation != nullptr && holds(entry.explanation->title, needle));
}

std::vector<ProcessEntry> visibleEntries(std::span<const ProcessEntry> entries,
                                         const ProcessQuery& query) {
    std::vector<ProcessEntry> visible;
    visible.reserve(entries.size());
    std::ranges::copy_if(entries, std::back_inserter(visible),
                         [&query, needle = query.needle()](const ProcessEntry& entry) {
                             return (!query.verdict || entry.verdict == *query.verdict) &&
                                    matches(entry, needle);
                         });
    std::ranges::stable_sort(
        visible, [&query](const ProcessEntry& left, const ProcessEntry& right) {
            if (left.isKernel() != right.isKernel()) {
                return left.isKernel();
            }
            return query.byMemory ? left.group->memoryBytes > right.group->memoryBytes
                                  : left.group->cpuPercent > right.group->cpuPercent;
        });
    return visible;
}

std::size_t countOf(std::span<const ProcessEntry> entries, std::optional<Verdict> verdict) {
    return static_cast<std::size_t>(std::ranges::count_if(
        entries, [&](const ProcessEntry& entry) { return !verdict || entry.verdict == *verdict; }));
}

QString emptyListText(const ProcessQuery& query) {
    if (query.needle().isEmpty()) {
        return QStringLiteral("Nothing here right now.");
    }
    return QStringLiteral("No process matches \"") + query.search + QStringLiteral("\".");
}

} // namespace pacelet
