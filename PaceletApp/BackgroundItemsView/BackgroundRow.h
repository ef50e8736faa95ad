#pragma once

#include "Core/Knowledge/CatalogEntry.h"
#include "Core/Sampling/ProcessUsage.h"
#include "PaceletApp/BackgroundItemsView/ItemGroups.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pacelet {

/// A row of the list of background items: the head of an owner, or one of the items that follow it.
struct BackgroundRow {
    std::string id;
    bool isHead = false;
    bool isFirst = false; ///< of its owner's items
    bool isLast = false;
    QString title;    ///< the owner's name, or what the item is
    QString appPath;  ///< where the owner of a head would be installed
    QString subtitle; ///< how many items a head has, or the item's label
    QString scope;
    bool isRunning = false;
    QString figures; ///< empty where its process is not known
    QString verdict; ///< raw value; empty without an explanation

    const std::string& key() const { return id; }
    /// The roles head, first, last, title, appPath, subtitle, scope, running, figures and verdict.
    static std::vector<ListRole<BackgroundRow>> roles();

    bool operator==(const BackgroundRow&) const = default;
};

/// What the rest of the program knows of the items.
struct BackgroundFacts {
    std::function<std::optional<Explanation>(const BackgroundItem&)> explanation;
    /// Null for an unknown process.
    std::function<std::shared_ptr<const ProcessUsage>(std::int32_t pid)> usage;
};

/// All groups in one flat list.
std::vector<BackgroundRow> backgroundRows(const std::vector<ItemGroup>& groups,
                                          const BackgroundFacts& facts);

using BackgroundListModel = KeyedListModel<BackgroundRow>;

} // namespace pacelet
