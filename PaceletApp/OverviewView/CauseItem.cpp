#include "PaceletApp/OverviewView/CauseItem.h"

#include "PaceletApp/Support/QtText.h"

#include <fmt/format.h>

#include <algorithm>

namespace pacelet {

const ProcessGroup* groupOf(const Finding& finding, std::span<const ProcessGroup> groups) {
    if (!finding.groupID()) {
        return nullptr;
    }
    const auto found = std::ranges::find(groups, *finding.groupID(), &ProcessGroup::id);
    return found != groups.end() ? &*found : nullptr;
}

CauseItem causeItem(const Finding& finding, std::span<const ProcessGroup> groups) {
    CauseItem item;
    item.id = finding.id();
    item.headline = qtText(finding.headline());
    item.grave = finding.severity() >= Severity::high;
    if (finding.primaryFix()) {
        item.fix = lookOf(*finding.primaryFix(), groupOf(finding, groups));
    }
    item.note = qtText(finding.leaveNote().value_or(""));
    return item;
}

std::vector<ListRole<CauseItem>> CauseItem::roles() {
    using Item = CauseItem;
    return {
        {"headline", [](const Item& item) { return item.headline; }},
        {"grave", [](const Item& item) { return item.grave; }},
        {"fix", [](const Item& item) { return QVariant::fromValue(item.fix); }},
        {"note", [](const Item& item) { return item.note; }},
    };
}

QString moreCausesLabel(std::size_t count) {
    if (count == 0) {
        return {};
    }
    return qtText(fmt::format("And {} more {}", count, count == 1 ? "cause" : "causes"));
}

} // namespace pacelet
