#pragma once

#include "Core/Platform/BackgroundItem.h"
#include "Core/Platform/HostAbilities.h"
#include "Core/Platform/Kernel.h"
#include "Core/Platform/NetworkLink.h"
#include "Core/Platform/ProgramKnowledge.h"
#include "Core/Platform/ShellOutput.h"
#include "Core/Platform/Workspace.h"
#include "Hosts/Recorded/Capture.h"

#include <tuple>

/// The fields of everything that a capture holds, in the order in which they stand in its file.
/// Another order, or another field, is another `Capture::version`.
namespace pacelet::Recorded {

/// What a tool did: a status of 0 and more, or why it could not be started.
struct ToolAnswer {
    std::optional<std::int32_t> launchFailure; ///< a number of the system's generic errors
    Shell::Output output;
};

/// One application among those that run.
struct AppAnswer {
    std::optional<std::string> bundlePath;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> executablePath;
    ActivationPolicy policy{};
};

struct WiFiAnswer {
    std::int64_t rssi = 0;
    std::int64_t noise = 0;
    double rate = 0;
    std::optional<int> band;
};

// The last case of each enumeration, so that a file can't bring in one that there isn't.
constexpr auto lastCase(ActivationPolicy) {
    return ActivationPolicy::prohibited;
}
constexpr auto lastCase(ProgramRole) {
    return ProgramRole::program;
}
constexpr auto lastCase(ItemScope) {
    return ItemScope::appBundled;
}
constexpr auto lastCase(SettingsPane) {
    return settingsPanes.back().value;
}
constexpr auto lastCase(OperatingSystem) {
    return OperatingSystem::linuxDesktop;
}

inline auto fieldsOf(Shell::Output& it) {
    return std::tie(it.status, it.stdout, it.stderr);
}
inline auto fieldsOf(ToolAnswer& it) {
    return std::tie(it.launchFailure, it.output);
}
inline auto fieldsOf(AppAnswer& it) {
    return std::tie(it.bundlePath, it.bundleIdentifier, it.executablePath, it.policy);
}
inline auto fieldsOf(WiFiAnswer& it) {
    return std::tie(it.rssi, it.noise, it.rate, it.band);
}
inline auto fieldsOf(VMStatistics64& it) {
    return std::tie(it.free_count, it.wire_count, it.purgeable_count, it.compressor_page_count,
                    it.external_page_count, it.internal_page_count);
}
inline auto fieldsOf(VolumeCapacities& it) {
    return std::tie(it.availableForImportantUsage, it.total);
}
inline auto fieldsOf(NetworkPath& it) {
    return std::tie(it.satisfied, it.usesWiFi, it.usesWiredEthernet);
}
inline auto fieldsOf(ProgramFacts& it) {
    return std::tie(it.role, it.entryName, it.entryKind, it.entryComment, it.unit,
                    it.unitDescription, it.package, it.packageDescription, it.manualLine);
}
inline auto fieldsOf(BackgroundItem& it) {
    return std::tie(it.label, it.program, it.source, it.scope, it.ownerApp, it.runAtLoad,
                    it.keepAlive, it.pid, it.facts);
}
inline auto fieldsOf(HostAbilities& it) {
    return std::tie(it.missingPanes, it.diskTools, it.freesSpace, it.rebuildsIndex, it.reviewsTabs,
                    it.restarts, it.alwaysAsks);
}
inline auto fieldsOf(Moment& it) {
    return std::tie(it.wall, it.monotonic);
}
inline auto fieldsOf(Answer& it) {
    return std::tie(it.look, it.value);
}
inline auto fieldsOf(Capture& it) {
    return std::tie(it.system, it.tellsPrograms, it.listsBackgroundItems, it.looks, it.answers);
}

} // namespace pacelet::Recorded
