#pragma once

#include "Core/Platform/SettingsPane.h"

#include <algorithm>
#include <string>
#include <vector>

namespace pacelet {

/// Which of a Mac's ways to help there are on a machine. As it stands, all of them: a Mac.
struct HostAbilities {
    std::vector<SettingsPane> missingPanes; ///< pages of the settings that nothing here shows
    /// Bundle identifiers of applications that show what fills the disk, best first, for where the
    /// sibling application is not installed.
    std::vector<std::string> diskTools;
    bool freesSpace = true; ///< there is something to open when the disk is full
    bool rebuildsIndex = true;
    bool reviewsTabs = true;
    bool restarts = true;
    /// Whoever restarts the machine asks the user, and so does every application that is to quit.
    /// False where that has to be found out from case to case.
    bool alwaysAsks = true;

    bool opens(SettingsPane pane) const { return std::ranges::count(missingPanes, pane) == 0; }

    bool operator==(const HostAbilities&) const = default;
};

} // namespace pacelet
