#include "PaceletApp/BackgroundItemsView/BackgroundRow.h"

#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Knowledge/Verdict.h"
#include "Core/Sampling/Format.h"
#include "PaceletApp/Support/QtText.h"

namespace pacelet {

namespace {

BackgroundRow headRow(const ItemGroup& group) {
    BackgroundRow row;
    row.id = "owner " + group.name;
    row.isHead = true;
    row.title = qtText(group.name);
    if (group.name != unknownDeveloper) {
        row.appPath = qtText("/Applications/" + group.name + ".app");
    }
    row.subtitle = QString::number(group.items.size());
    return row;
}

BackgroundRow itemRow(const BackgroundItem& item, const BackgroundFacts& facts) {
    const std::optional<Explanation> explanation = facts.explanation(item);
    BackgroundRow row;
    row.id = "item " + item.id();
    row.title = qtText(explanation ? explanation->title : item.label);
    row.subtitle = qtText(item.label);
    row.scope = qtText(scopeLabel(item));
    row.isRunning = item.pid.has_value();
    if (explanation) {
        row.verdict = qtText(rawValue(explanation->verdict));
    }
    if (const auto usage = item.pid ? facts.usage(*item.pid) : nullptr) {
        row.figures =
            qtText(Format::percent(usage->cpuPercent) + " · " + Format::bytes(usage->memoryBytes));
    }
    return row;
}

} // namespace

std::vector<BackgroundRow> backgroundRows(const std::vector<ItemGroup>& groups,
                                          const BackgroundFacts& facts) {
    std::vector<BackgroundRow> rows;
    for (const ItemGroup& group : groups) {
        rows.push_back(headRow(group));
        const std::size_t first = rows.size();
        for (const BackgroundItem* const item : group.items) {
            rows.push_back(itemRow(*item, facts));
        }
        rows[first].isFirst = true;
        rows.back().isLast = true;
    }
    return rows;
}

std::vector<ListRole<BackgroundRow>> BackgroundRow::roles() {
    using Row = BackgroundRow;
    return {
        {"head", [](const Row& row) { return row.isHead; }},
        {"first", [](const Row& row) { return row.isFirst; }},
        {"last", [](const Row& row) { return row.isLast; }},
        {"title", [](const Row& row) { return row.title; }},
        {"appPath", [](const Row& row) { return row.appPath; }},
        {"subtitle", [](const Row& row) { return row.subtitle; }},
        {"scope", [](const Row& row) { return row.scope; }},
        {"running", [](const Row& row) { return row.isRunning; }},
        {"figures", [](const Row& row) { return row.figures; }},
        {"verdict", [](const Row& row) { return row.verdict; }},
    };
}

} // namespace pacelet
