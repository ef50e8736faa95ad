#include "PaceletApp/Components/ProcessItem.h"

#include "Core/Sampling/Format.h"
#include "PaceletApp/Support/QtText.h"

#include <fmt/format.h>

#include <algorithm>

namespace pacelet {

namespace {

std::string subtitle(const ProcessGroup& group, const Explanation* explanation) {
    std::string text = explanation != nullptr ? explanation->summary : "";
    if (group.helperCount() > 0) {
        text += fmt::format(" · {} helpers", group.helperCount());
    }
    return text;
}

bool offersQuit(const ProcessGroup& group, const Explanation& explanation) {
    return group.quittable &&
           std::ranges::find(explanation.fixes, FixID::quitApp) != explanation.fixes.end();
}

void addColumns(ProcessItem& item, const ProcessGroup& group, const Explanation& explanation) {
    item.verdict = qtText(rawValue(explanation.verdict));
    if (offersQuit(group, explanation)) {
        item.fix = lookOf(FixID::quitApp, &group);
    } else {
        item.note = qtText(explanation.idleNote.value_or(""));
    }
}

} // namespace

QString spoken(const ProcessItem& item, const QString& figures) {
    const auto verdict = verdictFromRawValue(item.verdict.toStdString());
    QStringList parts{item.subtitle, figures, verdict ? lookOf(*verdict).accessibleName : QString{},
                      item.note};
    parts.removeAll(QString{});
    return parts.join(QStringLiteral(", "));
}

ProcessItem processItem(const ProcessGroup& group, const Explanation* explanation) {
    ProcessItem item;
    item.id = group.id;
    item.appPath = qtText(group.appPath.value_or(""));
    item.symbol = qtText(explanation != nullptr ? explanation->symbol : "gearshape");
    item.name = qtText(group.displayName);
    item.subtitle = qtText(subtitle(group, explanation));
    item.cpu = qtText(fmt::format("{:.1f}%", group.cpuPercent));
    item.memory = qtText(Format::bytes(group.memoryBytes));
    if (explanation != nullptr) {
        addColumns(item, group, *explanation);
    }
    item.spoken = spoken(item, QStringLiteral("CPU %1, memory %2").arg(item.cpu, item.memory));
    return item;
}

std::vector<ListRole<ProcessItem>> ProcessItem::roles() {
    using Item = ProcessItem;
    return {
        {"groupId", [](const Item& item) { return qtText(item.id); }},
        {"appPath", [](const Item& item) { return item.appPath; }},
        {"symbol", [](const Item& item) { return item.symbol; }},
        {"name", [](const Item& item) { return item.name; }},
        {"subtitle", [](const Item& item) { return item.subtitle; }},
        {"cpu", [](const Item& item) { return item.cpu; }},
        {"memory", [](const Item& item) { return item.memory; }},
        {"verdict", [](const Item& item) { return item.verdict; }},
        {"fix", [](const Item& item) { return QVariant::fromValue(item.fix); }},
        {"note", [](const Item& item) { return item.note; }},
        {"spoken", [](const Item& item) { return item.spoken; }},
    };
}

} // namespace pacelet
