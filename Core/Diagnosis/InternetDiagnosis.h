#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Internet/Link.h"
#include "Core/Internet/NetUsage.h"
#include "Core/Internet/SpeedResult.h"
#include "Core/Platform/HostAbilities.h"

#include <optional>
#include <span>
#include <vector>

/// The rules that say whether slowness comes from the machine, the Wi-Fi or the internet line.
/// Pure; no effect on the machine's own status.
namespace pacelet::InternetDiagnosis {

/// Runs all rules: gravest finding first, then in rule order. The rates of `usage` must be finite
/// and fit 64 bits. The group id of a bandwidth hog is that of a process, and no group's.
std::vector<Finding> run(LinkType link, const std::optional<WiFiLink>& wifi,
                         const std::optional<SpeedResult>& speed, std::span<const NetUsage> usage,
                         const AppName& appName, const HostAbilities& abilities = {});

} // namespace pacelet::InternetDiagnosis
