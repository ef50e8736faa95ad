#include "Core/Diagnosis/Finding.h"

#include "Core/Support/EnumTable.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pacelet {

namespace {

struct KindRow {
    FindingKind value;
    std::string_view rawValue;
    std::string_view symbol;
};
constexpr std::array<KindRow, 17> kinds{{
    {FindingKind::heat, "heat", "thermometer.medium"},
    {FindingKind::memory, "memory", "memorychip"},
    {FindingKind::cpuHog, "cpuHog", "cpu"},
    {FindingKind::spotlight, "spotlight", "magnifyingglass"},
    {FindingKind::photos, "photos", "photo"},
    {FindingKind::windowServer, "windowServer", "macwindow.on.rectangle"},
    {FindingKind::browser, "browser", "globe"},
    {FindingKind::lowDisk, "lowDisk", "internaldrive"},
    {FindingKind::longUptime, "longUptime", "clock.arrow.circlepath"},
    {FindingKind::lowPower, "lowPower", "battery.25"},
    {FindingKind::stuckApp, "stuckApp", "exclamationmark.octagon"},
    {FindingKind::offline, "offline", "wifi.slash"},
    {FindingKind::weakWiFi, "weakWiFi", "wifi.exclamationmark"},
    {FindingKind::band24, "band24", "wifi.exclamationmark"},
    {FindingKind::slowLine, "slowLine", "speedometer"},
    {FindingKind::laggy, "laggy", "waveform.path.ecg"},
    {FindingKind::bandwidthHog, "bandwidthHog", "arrow.up.arrow.down"},
}};

struct SeverityRow {
    Severity value;
    std::string_view rawValue;
};
constexpr std::array<SeverityRow, 4> severities{{
    {Severity::low, "low"},
    {Severity::medium, "medium"},
    {Severity::high, "high"},
    {Severity::critical, "critical"},
}};

} // namespace

std::string_view rawValue(FindingKind kind) {
    return rowOf(kinds, kind).rawValue;
}

std::string_view symbol(FindingKind kind) {
    return rowOf(kinds, kind).symbol;
}

std::string_view rawValue(Severity severity) {
    return rowOf(severities, severity).rawValue;
}

std::optional<FindingKind> kindFromRawValue(std::string_view rawValue) {
    return fromRawValue<FindingKind>(kinds, rawValue);
}

std::optional<Severity> severityFromRawValue(std::string_view rawValue) {
    return fromRawValue<Severity>(severities, rawValue);
}

Finding::Finding(Fields fields)
    : id_{rawValue(fields.kind)},
      fields_{std::move(fields)} {
    if (fields_.groupID) {
        id_ += ":" + *fields_.groupID;
    }
}

Status statusOf(std::span<const Finding> findings) {
    if (findings.empty()) {
        return Status::quiet;
    }
    const bool grave = std::ranges::any_of(
        findings, [](const Finding& finding) { return finding.severity() >= Severity::high; });
    return grave ? Status::struggling : Status::busy;
}

std::span<const Finding> DiagnosisResult::more() const {
    const std::span<const Finding> all{findings};
    return all.empty() ? all : all.subspan(1, std::min(all.size() - 1, mostFurtherCauses));
}

} // namespace pacelet
