#pragma once

#include "Core/Knowledge/CatalogEntry.h"
#include "PaceletApp/Monitor/LivePicture.h"

#include <QString>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace pacelet {

/// Id and name of the row that stands for the kernel's heat control.
inline constexpr std::string_view kernelID = "kernel_task";

/// The group behind that row: it is there whether or not such a process was seen, and has no
/// figures.
std::shared_ptr<const ProcessGroup> kernelGroup();

/// A group with what is known of it. Copies neither, and keeps the lists alive that they are from.
struct ProcessEntry {
    std::shared_ptr<const ProcessGroup> group;
    std::shared_ptr<const Explanation> explanation; ///< null without a catalog
    Verdict verdict = Verdict::review;

    bool isKernel() const { return group->id == kernelID; }
};

/// The explanation of a group, or null.
using ExplanationSource = std::function<std::shared_ptr<const Explanation>(const ProcessGroup&)>;

/// The kernel and all of `groups`, in this order.
std::vector<ProcessEntry> allEntries(const std::shared_ptr<const ProcessGroups>& groups,
                                     const ExplanationSource& explanation);

/// What the user wants to see of the list.
struct ProcessQuery {
    QString search; ///< as typed
    std::optional<Verdict> verdict;
    bool byMemory = false; ///< otherwise by CPU

    /// The text to look for: without blanks around it, in lower case.
    QString needle() const { return search.trimmed().toLower(); }
};

/// Whether the name of the group, of one of its processes, or its title holds `needle`, which is in
/// lower case. Every group holds the empty one.
bool matches(const ProcessEntry& entry, const QString& needle);

/// The entries that `query` asks for: the kernel first, then the largest.
std::vector<ProcessEntry> visibleEntries(std::span<const ProcessEntry> entries,
                                         const ProcessQuery& query);

/// How many of `entries` have the verdict; all of them without one.
std::size_t countOf(std::span<const ProcessEntry> entries, std::optional<Verdict> verdict);

/// What stands in the place of an empty list.
QString emptyListText(const ProcessQuery& query);

} // namespace pacelet
