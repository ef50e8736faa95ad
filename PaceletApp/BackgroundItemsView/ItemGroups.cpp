#include "PaceletApp/BackgroundItemsView/ItemGroups.h"

#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Support/Precondition.h"

#include <algorithm>
#include <map>

namespace pacelet {

std::vector<ItemGroup> grouped(const std::vector<BackgroundItem>& items, const NameOrder& before) {
    std::map<std::string, std::vector<const BackgroundItem*>> byOwner;
    for (const BackgroundItem& item : items) {
        byOwner[item.ownerApp.value_or(std::string{unknownDeveloper})].push_back(&item);
    }
    std::vector<ItemGroup> groups;
    for (auto& [name, members] : byOwner) {
        std::ranges::stable_sort(members, {}, &BackgroundItem::label);
        groups.push_back({name, std::move(members)});
    }
    std::ranges::stable_sort(groups, [&](const ItemGroup& left, const ItemGroup& right) {
        const bool leftIsKnown = left.name != unknownDeveloper;
        const bool rightIsKnown = right.name != unknownDeveloper;
        return leftIsKnown == rightIsKnown ? before(left.name, right.name) : leftIsKnown;
    });
    return groups;
}

std::string scopeLabel(const BackgroundItem& item) {
    switch (item.scope) {
    case ItemScope::userAgent:
        return "Runs for you";
    case ItemScope::systemAgent:
        return "Runs for all users";
    case ItemScope::systemDaemon:
        return "Runs as system";
    case ItemScope::appBundled:
        return "Built into " + item.ownerApp.value_or("an app");
    }
    invariantBreach("an item's scope is none of its cases");
}

} // namespace pacelet
