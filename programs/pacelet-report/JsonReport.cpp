#include "programs/pacelet-report/JsonReport.h"

#include "Core/Support/JsonWriter.h"

#include <algorithm>

namespace pacelet::report {

namespace {

void writeOptional(JsonWriter& json, std::string_view key, const std::optional<std::string>& text) {
    if (text) {
        json.key(key).value(*text);
    }
}

void writeFinding(JsonWriter& json, const Finding& finding) {
    json.beginObject();
    json.key("id").value(finding.id());
    json.key("kind").value(rawValue(finding.kind()));
    json.key("severity").value(rawValue(finding.severity()));
    json.key("headline").value(finding.headline());
    json.key("detail").value(finding.detail());
    writeOptional(json, "groupID", finding.groupID());
    if (finding.primaryFix()) {
        json.key("primaryFix").value(rawValue(*finding.primaryFix()));
    }
    writeOptional(json, "leaveNote", finding.leaveNote());
    json.endObject();
}

void writeReadings(JsonWriter& json, const SystemSignals& signals) {
    json.key("pressure").value(label(signals.pressure));
    json.key("swapUsedBytes").value(signals.swapUsedBytes);
    json.key("thermal").value(label(signals.thermal));
    json.key("diskFreeBytes").value(signals.diskFreeBytes);
    json.key("diskTotalBytes").value(signals.diskTotalBytes);
    json.key("uptime").value(signals.uptime);
    json.key("memoryTotalBytes").value(signals.memoryTotalBytes);
}

void writeSignals(JsonWriter& json, const SystemSignals& signals, const Report::Known& known) {
    json.beginObject();
    if (known.load) {
        json.key("cpuLoadPercent").value(signals.cpuLoadPercent);
        json.key("coreCount").value(signals.coreCount);
    }
    if (known.signals) {
        writeReadings(json, signals);
    }
    json.endObject();
}

void writeGroup(JsonWriter& json, const ProcessGroup& group, const ProcessCatalog& catalog,
                const Report::Known& known) {
    const Explanation explanation = catalog.explain(group);
    json.beginObject();
    json.key("id").value(group.id);
    json.key("displayName").value(group.displayName);
    writeOptional(json, "appPath", group.appPath);
    json.key("pid").value(std::int64_t{group.primary().pid});
    json.key("members").value(static_cast<std::int64_t>(group.members.size()));
    json.key("cpuPercent").value(group.cpuPercent);
    if (known.memory) {
        json.key("memoryBytes").value(group.memoryBytes);
    }
    json.key("quittable").value(group.quittable);
    json.key("verdict").value(rawValue(explanation.verdict));
    json.key("title").value(explanation.title);
    json.key("summary").value(explanation.summary);
    json.endObject();
}

} // namespace

std::string renderJson(const DiagnosisResult& result, std::span<const ProcessGroup> groups,
                       const ProcessCatalog& catalog, const SystemSignals& signals,
                       const Report::Known& known) {
    JsonWriter json;
    json.beginObject();
    json.key("status").value(Report::statusLabel(result.status));
    json.key("findings").beginArray();
    for (const Finding& finding : result.findings) {
        writeFinding(json, finding);
    }
    json.endArray();
    writeSignals(json.key("signals"), signals, known);
    json.key("groups").beginArray();
    for (const ProcessGroup& group : groups.first(std::min(groups.size(), Report::mostGroups))) {
        writeGroup(json, group, catalog, known);
    }
    json.endArray();
    json.endObject();
    return json.take();
}

} // namespace pacelet::report
