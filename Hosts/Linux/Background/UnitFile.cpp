#include "Hosts/Linux/Background/UnitFile.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Desktop/KeyFile.h"
#include "Hosts/Linux/Knowledge/StartFiles.h"

#include <algorithm>

namespace pacelet::Linux {

UnitFile parseUnitFile(std::string_view text) {
    constexpr std::string_view scriptMark = "LSB: "; // of what starts by an old script
    UnitFile unit;
    forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group == "Unit" && key == "Description") {
            value.remove_prefix(value.starts_with(scriptMark) ? scriptMark.size() : 0);
            unit.description = value;
        } else if (group == "Service" && key == "ExecStart") {
            if (value.empty()) {
                unit.takesCommandsBack = true;
            } else if (!unit.hasCommand) {
                unit.program = startedProgram(value);
            }
            unit.hasCommand = !value.empty();
        } else if (group == "Service" && key == "Restart") {
            unit.isRestarted = value != "no";
        } else if (((group == "Timer" || group == "Path") && key == "Unit") ||
                   (group == "Socket" && key == "Service")) {
            unit.starts = value;
        }
    });
    return unit;
}

void change(UnitFile& unit, const UnitFile& piece) {
    if (!piece.description.empty()) {
        unit.description = piece.description;
    }
    if (piece.takesCommandsBack || (piece.hasCommand && !unit.hasCommand)) {
        unit.program = piece.program;
        unit.hasCommand = piece.hasCommand;
    }
    if (!piece.starts.empty()) {
        unit.starts = piece.starts;
    }
    if (piece.isRestarted) {
        unit.isRestarted = piece.isRestarted;
    }
}

std::vector<std::string> pieceFolders(std::string_view name) {
    const std::string_view stem = withoutExtension(name);
    const std::string kind{name.substr(stem.size())};
    std::vector<std::string> folders{kind.substr(std::min<std::size_t>(1, kind.size())) + ".d"};
    for (std::size_t at = stem.find('-'); at != stem.npos; at = stem.find('-', at + 1)) {
        folders.push_back(std::string{stem.substr(0, at + 1)} + kind + ".d");
    }
    if (const std::string common = templateOf(name); !common.empty()) {
        folders.push_back(common + ".d");
    }
    folders.push_back(std::string{name} + ".d");
    return folders;
}

std::string filledIn(std::string_view description, std::string_view name) {
    const std::string_view stem = withoutExtension(name);
    const std::size_t at = stem.find('@');
    const std::string_view prefix = stem.substr(0, at);
    const std::string_view instance = at == stem.npos ? std::string_view{} : stem.substr(at + 1);
    std::string text;
    for (std::size_t place = 0; place < description.size(); ++place) {
        if (description[place] != '%') {
            text += description[place];
            continue;
        }
        switch (++place < description.size() ? description[place] : '\0') {
        case 'i':
        case 'I':
            text += instance;
            break;
        case 'p':
        case 'P':
            text += prefix;
            break;
        case 'n':
            text += name;
            break;
        case 'N':
            text += stem;
            break;
        case '%':
            text += '%';
            break;
        default:
            return {};
        }
    }
    return text;
}

std::string templateOf(std::string_view name) {
    const std::size_t at = name.find('@');
    const std::size_t point = name.rfind('.');
    if (at == name.npos || point == name.npos || point <= at + 1) {
        return {};
    }
    return std::string{name.substr(0, at + 1)}.append(name.substr(point));
}

} // namespace pacelet::Linux
