#pragma once

#include "Hosts/Linux/Apps/DesktopEntry.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// An entry in an autostart folder, with the switches that desktops of their own accord have added
/// to it.
struct AutostartFile {
    DesktopEntry entry;
    std::string comment;
    bool isSwitchedOff = false;    ///< in a desktop's own settings
    bool startsEverywhere = false; ///< Xfce: whatever desktops it names
    std::string gnomeCondition;    ///< such as "unless-exists some-file"
    std::string kdeCondition;      ///< "file:group:key:default"

    bool operator==(const AutostartFile&) const = default;
};

/// Nothing when the text is no entry.
std::optional<AutostartFile> parseAutostartFile(std::string_view text);

/// Where an entry is to start something.
struct AutostartPlace {
    std::span<const std::string> desktops;   ///< names of the running desktop
    std::span<const std::string> searchPath; ///< folders of programs
    std::string_view configFolder;           ///< in which conditions look for files
};

/// True when a login to this desktop starts the entry's program. A condition of a kind that is not
/// known counts as met.
bool startsAtLogin(const AutostartFile& file, const AutostartPlace& place);

/// True for a part of the desktop itself: one that no menu shows, or that names its desktops.
bool isDesktopPart(const AutostartFile& file);

} // namespace pacelet::Linux
