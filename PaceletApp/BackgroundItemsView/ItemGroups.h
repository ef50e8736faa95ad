#pragma once

#include "Core/Platform/BackgroundItem.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// The background items of one application, or of all unknown developers.
struct ItemGroup {
    std::string name;
    std::vector<const BackgroundItem*> items; ///< by label

    bool operator==(const ItemGroup&) const = default;
};

/// Whether a name stands before another in the user's language.
using NameOrder = std::function<bool(const std::string&, const std::string&)>;

/// The items by owner, the unknown one last. Names that are equal to `before` stand in byte order.
/// The groups point into `items`.
std::vector<ItemGroup> grouped(const std::vector<BackgroundItem>& items, const NameOrder& before);

/// Whom the item runs for.
std::string scopeLabel(const BackgroundItem& item);

} // namespace pacelet
