#include "Hosts/Linux/Apps/DesktopEntry.h"

#include "Core/Support/Text.h"

#include <algorithm>

namespace pacelet::Linux {

namespace {

/// A value with its escapes (`\s`, `\n`, `\t`, `\r`, `\\`) resolved; any other stays as written.
std::string unescaped(std::string_view value) {
    constexpr std::string_view codes = "sntr\\";
    constexpr std::string_view meanings = " \n\t\r\\";
    std::string text;
    text.reserve(value.size());
    for (std::size_t at = 0; at < value.size(); ++at) {
        const std::size_t code = value[at] == '\\' && at + 1 < value.size()
                                     ? codes.find(value[at + 1])
                                     : std::string_view::npos;
        if (code == std::string_view::npos) {
            text += value[at];
        } else {
            text += meanings[code];
            ++at;
        }
    }
    return text;
}

std::vector<std::string> list(std::string_view value) {
    const auto pieces = splitDroppingEmpty(value, ';');
    return {pieces.begin(), pieces.end()};
}

void assign(DesktopEntry& entry, std::string_view key, std::string_view value) {
    struct TextKey {
        std::string_view name;
        std::string DesktopEntry::*field;
    };
    struct FlagKey {
        std::string_view name;
        bool DesktopEntry::*field;
    };
    struct ListKey {
        std::string_view name;
        std::vector<std::string> DesktopEntry::*field;
    };
    for (const TextKey& text :
         {TextKey{"Type", &DesktopEntry::type}, TextKey{"Name", &DesktopEntry::name},
          TextKey{"Exec", &DesktopEntry::exec}, TextKey{"TryExec", &DesktopEntry::tryExec},
          TextKey{"Icon", &DesktopEntry::icon}, TextKey{"Path", &DesktopEntry::path}}) {
        if (text.name == key) {
            entry.*text.field = unescaped(value);
        }
    }
    for (const FlagKey& flag :
         {FlagKey{"NoDisplay", &DesktopEntry::noDisplay}, FlagKey{"Hidden", &DesktopEntry::hidden},
          FlagKey{"Terminal", &DesktopEntry::runsInTerminal}}) {
        if (flag.name == key) {
            entry.*flag.field = value == "true";
        }
    }
    for (const ListKey& names : {ListKey{"Categories", &DesktopEntry::categories},
                                 ListKey{"OnlyShowIn", &DesktopEntry::onlyShowIn},
                                 ListKey{"NotShowIn", &DesktopEntry::notShowIn},
                                 ListKey{"Actions", &DesktopEntry::actions}}) {
        if (names.name == key) {
            entry.*names.field = list(value);
        }
    }
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text) {
    std::optional<DesktopEntry> entry;
    bool isInGroup = false;
    forEachLine(text, [&](std::string_view line) {
        line = trimmed(line);
        if (line.starts_with('[')) {
            // A second group of this name is not to be; the first one stands.
            isInGroup = line == "[Desktop Entry]" && !entry;
            if (isInGroup) {
                entry.emplace();
            }
            return;
        }
        const std::size_t equals = line.find('=');
        if (isInGroup && !line.starts_with('#') && equals != std::string_view::npos) {
            assign(*entry, trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
        }
    });
    return entry;
}

bool isInMenu(const DesktopEntry& entry, std::span<const std::string> desktops) {
    const auto isOneOf = [&](const std::vector<std::string>& names) {
        return std::any_of(desktops.begin(), desktops.end(), [&](const std::string& desktop) {
            return std::find(names.begin(), names.end(), desktop) != names.end();
        });
    };
    return entry.type == "Application" && !entry.noDisplay && !entry.hidden &&
           (entry.onlyShowIn.empty() || isOneOf(entry.onlyShowIn)) && !isOneOf(entry.notShowIn);
}

} // namespace pacelet::Linux
