#pragma once

#include "Core/Knowledge/FixID.h"
#include "Core/Knowledge/Verdict.h"
#include "Core/Platform/OperatingSystem.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// The icon glyph of what has none of its own.
inline constexpr std::string_view defaultSymbol = "gearshape";

/// One hand-written record of the catalog.
struct CatalogEntry {
    /// What the entry claims.
    struct Match {
        std::vector<std::string> names;         ///< exact process names
        std::vector<std::string> pathPrefixes;  ///< prefixes of the executable's path
        std::vector<std::string> launchdLabels; ///< prefixes of a launchd label

        bool operator==(const Match&) const = default;
    };

    std::string id; ///< unique and stable
    Match match;
    std::string title;
    std::string summary;
    std::string whyHigh;
    Verdict verdict = Verdict::review;
    std::optional<std::string> idleNote;
    std::vector<FixID> fixes; ///< in order of preference
    std::string guide;        ///< path component of the guide page
    std::optional<std::string> symbol;
    std::optional<OperatingSystem> system; ///< where these names mean this; absent: everywhere

    bool operator==(const CatalogEntry&) const = default;
};

/// What there is to say of a process or a background item.
struct Explanation {
    std::optional<std::string> entryID; ///< absent for a fallback
    std::string title;
    std::string summary;
    std::optional<std::string> whyHigh;
    Verdict verdict = Verdict::review;
    std::optional<std::string> idleNote;
    std::vector<FixID> fixes;
    std::optional<std::string> guide;
    std::string symbol; ///< name of an icon glyph
    bool isFallback = false;

    bool operator==(const Explanation&) const = default;
};

} // namespace pacelet
