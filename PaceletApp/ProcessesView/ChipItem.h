#pragma once

#include "PaceletApp/Models/KeyedListModel.h"
#include "PaceletApp/ProcessesView/ProcessEntry.h"

#include <QString>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace pacelet {

/// A chip above the list: a verdict to filter by, or none.
struct ChipItem {
    std::string id; ///< raw value of the verdict; empty for all
    QString label;
    bool chosen = false;

    const std::string& key() const { return id; }
    /// value, label and chosen.
    static std::vector<ListRole<ChipItem>> roles();

    bool operator==(const ChipItem&) const = default;
};

using ChipListModel = KeyedListModel<ChipItem>;

/// All chips in order, each with the number of `entries` that it stands for.
std::vector<ChipItem> chipItems(std::span<const ProcessEntry> entries,
                                std::optional<Verdict> chosen);

} // namespace pacelet
