#include "PaceletApp/ProcessesView/ListedProcess.h"

#include "Core/Support/EnumTable.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"

#include <array>
#include <iterator>
#include <string_view>
#include <unordered_map>

namespace pacelet {

namespace {

struct HeatRow {
    Thermal value;
    std::string_view word;
};
constexpr std::array<HeatRow, 4> heats{{
    {Thermal::normal, "heat ok"},
    {Thermal::warm, "Warm"},
    {Thermal::hot, "Hot"},
    {Thermal::veryHot, "Very hot"},
}};

ListedProcess kernelProcess(Thermal thermal) {
    ListedProcess listed;
    listed.id = kernelID;
    listed.kernel = true;
    listed.symbol = QStringLiteral("thermometer.medium");
    listed.name = qtText(sentence("kernel_task"));
    listed.subtitle = qtText(sentence("Kernel (heat control)"));
    listed.cpu = qtText(rowOf(heats, thermal).word);
    listed.tone = toneOf(thermal);
    listed.memory = QStringLiteral("—");
    listed.verdict = qtText(rawValue(Verdict::leave));
    listed.note = thermal == Thermal::normal ? QStringLiteral("Not cooling right now")
                                             : qtText(sentence("Cooling your Mac"));
    listed.spoken = spoken(listed, listed.cpu);
    return listed;
}

} // namespace

ListedProcess listedProcess(const ProcessEntry& entry, Thermal thermal) {
    if (entry.isKernel()) {
        return kernelProcess(thermal);
    }
    ListedProcess listed;
    static_cast<ProcessItem&>(listed) = processItem(*entry.group, entry.explanation.get());
    return listed;
}

std::vector<ListRole<ListedProcess>> ListedProcess::roles() {
    using Row = ListedProcess;
    std::vector<ListRole<Row>> roles;
    for (ListRole<ProcessItem>& role : ProcessItem::roles()) {
        roles.push_back({std::move(role.name), std::move(role.value)});
    }
    const ListRole<Row> more[] = {
        {"kernel", [](const Row& row) { return row.kernel; }},
        {"tone", [](const Row& row) { return static_cast<int>(row.tone); }},
        {"open", [](const Row& row) { return row.open; }},
        {"current", [](const Row& row) { return row.current; }},
        {"place", [](const Row& row) { return row.y; }},
    };
    roles.insert(roles.end(), std::begin(more), std::end(more));
    return roles;
}

void assignKeys(std::vector<ListedProcess>& next, std::span<const ListedProcess* const> shown,
                std::uint64_t& counter) {
    std::unordered_map<std::string_view, std::size_t> places;
    for (std::size_t place = 0; place < shown.size(); ++place) {
        places.try_emplace(shown[place]->id, place);
    }
    std::vector<bool> taken(shown.size(), false);
    for (ListedProcess& row : next) {
        const auto known = places.find(row.id);
        if (known != places.end() && !taken[known->second]) {
            taken[known->second] = true;
            row.rowKey = shown[known->second]->rowKey;
        }
    }
    std::size_t free = 0;
    for (ListedProcess& row : next) {
        if (!row.rowKey.empty()) {
            continue;
        }
        while (free < shown.size() && taken[free]) {
            ++free;
        }
        row.rowKey = free < shown.size() ? shown[free++]->rowKey : std::to_string(counter++);
    }
}

} // namespace pacelet
