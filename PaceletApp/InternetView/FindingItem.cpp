#include "PaceletApp/InternetView/FindingItem.h"

#include "Core/Support/EnumTable.h"
#include "PaceletApp/Support/QtText.h"

#include <array>
#include <string_view>

namespace pacelet {

namespace {

struct SeverityRow {
    Severity value;
    std::string_view tone;
};
constexpr std::array<SeverityRow, 4> severities{{
    {Severity::low, "neutral"},
    {Severity::medium, "amber"},
    {Severity::high, "red"},
    {Severity::critical, "red"},
}};

} // namespace

FindingItem findingItem(const Finding& finding) {
    FindingItem item;
    item.id = finding.id();
    item.symbol = qtText(symbol(finding.kind()));
    item.tone = qtText(rowOf(severities, finding.severity()).tone);
    item.title = qtText(finding.headline());
    item.detail = qtText(finding.detail());
    if (finding.primaryFix()) {
        // Its group id, if any, names a process and no group.
        item.fix = lookOf(*finding.primaryFix(), nullptr);
    }
    return item;
}

std::vector<ListRole<FindingItem>> FindingItem::roles() {
    using Item = FindingItem;
    return {
        {"symbol", [](const Item& item) { return item.symbol; }},
        {"tone", [](const Item& item) { return item.tone; }},
        {"title", [](const Item& item) { return item.title; }},
        {"detail", [](const Item& item) { return item.detail; }},
        {"fix", [](const Item& item) { return QVariant::fromValue(item.fix); }},
    };
}

} // namespace pacelet
