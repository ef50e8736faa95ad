#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// What we take from the "[Desktop Entry]" group of a `.desktop` file. Texts are the untranslated
/// ones.
struct DesktopEntry {
    std::string type;
    std::string name;
    std::string exec;    ///< the command line, still quoted
    std::string tryExec; ///< a program that must exist; empty when nothing is asked for
    std::string icon;    ///< a name in the icon theme, or an absolute path
    std::string path;    ///< folder in which it is started; empty: that of whoever starts it
    bool noDisplay = false;
    bool hidden = false;
    bool runsInTerminal = false;
    std::vector<std::string> categories;
    std::vector<std::string> onlyShowIn; ///< desktops that show it; empty: all
    std::vector<std::string> notShowIn;
    std::vector<std::string> actions; ///< that the menu offers beside starting it

    bool operator==(const DesktopEntry&) const = default;
};

/// Entries have some kilobytes; what is longer than this is none.
inline constexpr std::size_t mostEntryBytes = std::size_t{1} << 20;

/// Nothing when the text has no such group.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text);

/// True for an application that a menu of one of `desktops` shows.
bool isInMenu(const DesktopEntry& entry, std::span<const std::string> desktops);

} // namespace pacelet::Linux
