#include "PaceletApp/InternetView/FindingItem.h"

#include "Core/Support/EnumTable.h"
#include "PaceletApp/Support/QtText.h"

#include <array>
#include <string_view>

namespace pacelet {

namespace {

struct SeverityRow {
    Severity value;
    Tone tone;
};
constexpr std::array<SeverityRow, 4> severities{{
    {Severity::low, Tone::Neutral},
    {Severity::medium, Tone::Amber},
    {Severity::high, Tone::Red},
    {Severity::critical, Tone::Red},
}};

} // namespace

FindingItem findingItem(const Finding& finding) {
    FindingItem item;
    item.id = finding.id();
    item.symbol = qtText(symbol(finding.kind()));
    item.tone = rowOf(severities, finding.severity()).tone;
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
        {"tone", [](const Item& item) { return static_cast<int>(item.tone); }},
        {"title", [](const Item& item) { return item.title; }},
        {"detail", [](const Item& item) { return item.detail; }},
        {"fix", [](const Item& item) { return QVariant::fromValue(item.fix); }},
    };
}

} // namespace pacelet
