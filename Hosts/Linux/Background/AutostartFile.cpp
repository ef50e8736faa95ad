#include "Hosts/Linux/Background/AutostartFile.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/ExecLine.h"
#include "Hosts/Linux/Apps/ProgramSearch.h"
#include "Hosts/Linux/Desktop/KeyFile.h"

#include <array>
#include <filesystem>

namespace pacelet::Linux {

namespace {

constexpr std::size_t largestConfigFile = std::size_t{1} << 20;

void takeSwitch(AutostartFile& file, std::string_view key, std::string_view value) {
    if (key == "Comment") {
        file.comment = value;
    } else if (key == "X-GNOME-Autostart-enabled" || key == "X-MATE-Autostart-enabled") {
        file.isSwitchedOff = file.isSwitchedOff || value == "false";
    } else if (key == "X-XFCE-Autostart-Override") {
        file.startsEverywhere = value == "true";
    } else if (key == "AutostartCondition") {
        file.gnomeCondition = value;
    } else if (key == "X-KDE-autostart-condition") {
        file.kdeCondition = value;
    }
}

bool meetsGnomeCondition(std::string_view condition, std::string_view configFolder) {
    const std::size_t blank = condition.find(' ');
    const std::string_view kind = condition.substr(0, blank);
    if (blank == condition.npos || (kind != "if-exists" && kind != "unless-exists")) {
        return true;
    }
    std::error_code error;
    const bool exists =
        std::filesystem::exists(joinedPath(configFolder, trimmed(condition.substr(blank))), error);
    return exists == (kind == "if-exists");
}

bool meetsKDECondition(std::string_view condition, std::string_view configFolder) {
    const auto parts = splitKeepingEmpty(condition, ':');
    if (parts.size() != 4) {
        return true;
    }
    std::string value{parts[3]};
    std::string text;
    if (!readFile(joinedPath(configFolder, parts[0]), largestConfigFile, text)) {
        forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view told) {
            if (group == parts[1] && key == parts[2]) {
                value = told;
            }
        });
    }
    return asciiLowercased(value) != "false";
}

} // namespace

std::optional<AutostartFile> parseAutostartFile(std::string_view text) {
    auto entry = parseDesktopEntry(text);
    if (!entry) {
        return std::nullopt;
    }
    AutostartFile file;
    file.entry = *std::move(entry);
    forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group == "Desktop Entry") {
            takeSwitch(file, key, value);
        }
    });
    return file;
}

bool startsAtLogin(const AutostartFile& file, const AutostartPlace& place) {
    DesktopEntry entry = file.entry;
    entry.noDisplay = false; // a matter of menus
    if (file.startsEverywhere) {
        entry.onlyShowIn.clear();
        entry.notShowIn.clear();
    }
    if (file.isSwitchedOff || !isInMenu(entry, place.desktops)) {
        return false;
    }
    const std::vector<std::string> command = execCommand(entry.exec);
    const bool isThere = !command.empty() && findProgram(command.front(), place.searchPath) &&
                         (entry.tryExec.empty() || findProgram(entry.tryExec, place.searchPath));
    return isThere && meetsGnomeCondition(file.gnomeCondition, place.configFolder) &&
           meetsKDECondition(file.kdeCondition, place.configFolder);
}

bool isDesktopPart(const AutostartFile& file) {
    return file.entry.noDisplay || !file.entry.onlyShowIn.empty();
}

} // namespace pacelet::Linux
