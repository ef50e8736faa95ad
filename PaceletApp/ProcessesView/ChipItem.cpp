#include "PaceletApp/ProcessesView/ChipItem.h"

#include "PaceletApp/Support/QtText.h"

#include <fmt/format.h>

namespace pacelet {

std::vector<ListRole<ChipItem>> ChipItem::roles() {
    using Item = ChipItem;
    return {
        {"value", [](const Item& item) { return qtText(item.id); }},
        {"label", [](const Item& item) { return item.label; }},
        {"chosen", [](const Item& item) { return item.chosen; }},
    };
}

std::vector<ChipItem> chipItems(std::span<const ProcessEntry> entries,
                                std::optional<Verdict> chosen) {
    constexpr std::optional<Verdict> filters[] = {std::nullopt, Verdict::safe, Verdict::review,
                                                  Verdict::leave};
    std::vector<ChipItem> chips;
    for (const std::optional<Verdict>& filter : filters) {
        chips.push_back({filter ? std::string{rawValue(*filter)} : std::string{},
                         qtText(fmt::format("{} {}", filter ? pacelet::label(*filter) : "All",
                                            countOf(entries, filter))),
                         filter == chosen});
    }
    return chips;
}

} // namespace pacelet
