#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Platform/OperatingSystem.h"

#include <array>
#include <span>
#include <string_view>
#include <vector>

/// The rules that say what slows the machine down. Pure: no clock, no file, no state.
namespace pacelet::Diagnosis {

inline constexpr std::array<std::string_view, 7> spotlightFamily{
    "mds",          "mds_stores",     "mdworker_shared",    "mdworker",
    "mdbulkimport", "corespotlightd", "spotlightknowledged"};

inline constexpr std::array<std::string_view, 2> photosFamily{"photoanalysisd", "mediaanalysisd"};

/// A Mac's scripts reach the first few of them; where an extension of ours does it, all.
inline constexpr std::array<std::string_view, 6> browserApps{
    "Google Chrome.app", "Brave Browser.app", "Microsoft Edge.app",
    "Chromium.app",      "Vivaldi.app",       "Opera.app"};
inline constexpr std::size_t browserAppsOnMac = 3;

inline constexpr std::array<std::string_view, 10> vmHosts{"Docker",
                                                          "OrbStack",
                                                          "UTM",
                                                          "Parallels Desktop",
                                                          "VMware Fusion",
                                                          "Podman Desktop",
                                                          "Rancher Desktop",
                                                          "VirtualBuddy",
                                                          "Tart",
                                                          "Multipass"};

inline constexpr std::string_view virtualizationPrefix =
    "/System/Library/Frameworks/Virtualization.framework/";

/// How long Spotlight must have been busy to count as stuck; strictly more than this.
inline constexpr Seconds spotlightStuckAfter{10800.0};

/// What the rules return, and what each finding's processes use of the CPU, in percent of one core
/// and in the order of the findings; 0 for a finding that is about none.
struct WeighedResult {
    DiagnosisResult result;
    std::vector<double> weights;
};

/// Runs all rules and ranks what they find: gravest first, then by CPU, then in rule order.
WeighedResult weigh(const DiagnosisInput& input, const ProcessCatalog& catalog);

/// The same without the weights.
DiagnosisResult run(const DiagnosisInput& input, const ProcessCatalog& catalog);

/// What the Spotlight family uses together, in percent of one core.
double spotlightLoad(std::span<const ProcessGroup> groups);

/// A Chromium browser whose tabs can be cleaned up on this system.
bool isBrowser(const ProcessGroup& group, OperatingSystem system = OperatingSystem::macOS);

/// Whether a group of just this name runs.
bool isRunning(std::string_view app, std::span<const ProcessGroup> groups);

/// Whether `name` is one of `family`, compared exactly.
constexpr bool isIn(std::span<const std::string_view> family, std::string_view name) {
    for (const std::string_view member : family) {
        if (member == name) {
            return true;
        }
    }
    return false;
}

} // namespace pacelet::Diagnosis
