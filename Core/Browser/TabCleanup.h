#pragma once

#include "Core/Browser/BrowserTab.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// How the windows of one profile become one.
struct MergePlan {
    std::string targetWindowID;              ///< the window that stays
    std::vector<std::string> urls;           ///< addresses to open in it, in order
    std::vector<std::string> windowsToClose; ///< ids of the windows that go
    std::optional<std::string> profile;      ///< of the target window

    bool operator==(const MergePlan&) const = default;
};

/// What a browser's extensions take.
struct ExtensionUsage {
    std::int64_t count = 0;       ///< extension processes
    std::int64_t memoryBytes = 0; ///< the sum of their resident sizes

    bool operator==(const ExtensionUsage&) const = default;
};

/// The decisions of the tab cleaner. Incognito windows take part in none of them.
namespace TabCleanup {

/// The profile at the end of a window's name, behind the browser's own name; nothing for a browser
/// that has one profile only.
std::optional<std::string> profile(std::string_view windowName, std::string_view appName);

/// The form in which two addresses are compared: no fragment, scheme and host in lower case, and
/// one slash fewer at the end. The rest stays as it stands, percent-encoded bytes of the host
/// included. What is no URL is returned unchanged.
std::string normalize(std::string_view url);

/// The tabs that show what an earlier tab of the same profile shows, in listing order.
std::vector<BrowserTab> duplicates(const std::vector<BrowserWindow>& windows);

/// A plan for the profile with the most windows, if one has at least two; its window with the most
/// tabs stays. Of equals, the first in listing order is taken.
std::optional<MergePlan> mergePlan(const std::vector<BrowserWindow>& windows);

/// Sums up the extension processes of the browser whose bundle is `appPath`. `listing` has a
/// process a line: pid, resident kilobytes, command line. Lines that do not read are skipped, and
/// so is one whose size would take the sum out of 64 bits.
ExtensionUsage extensions(std::string_view listing, std::string_view appPath);

} // namespace TabCleanup

} // namespace pacelet
