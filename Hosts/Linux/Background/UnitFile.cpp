#include "Hosts/Linux/Background/UnitFile.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Desktop/KeyFile.h"
#include "Hosts/Linux/Knowledge/StartFiles.h"

#include <algorithm>

namespace pacelet::Linux {

UnitFile parseUnitFile(std::string_view text) {
    UnitFile unit;
    bool hasCommand = false;
    forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group == "Unit" && key == "Description") {
            unit.description = value;
        } else if (group == "Service" && key == "ExecStart") {
            if (!hasCommand) {
                unit.program = startedProgram(value);
            }
            hasCommand = !value.empty(); // an empty one takes back those before it
        } else if (group == "Service" && key == "Restart") {
            unit.isRestarted = value != "no";
        } else if (((group == "Timer" || group == "Path") && key == "Unit") ||
                   (group == "Socket" && key == "Service")) {
            unit.starts = value;
        }
    });
    return unit;
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
