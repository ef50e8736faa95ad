#include "Hosts/Linux/User/AutostartEntry.h"

#include "Core/Support/Files.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"
#include "Hosts/Linux/Apps/ExecLine.h"
#include "Hosts/Linux/Desktop/KeyFile.h"
#include "Hosts/Linux/User/AtomicFile.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace pacelet::Linux {

namespace {

constexpr std::size_t mostBytes = 1 << 16;

constexpr std::string_view trayOnly = " --hidden";

/// One quoted word of a command line, as it stands in an entry: the characters that mean something
/// within quotes get a backslash, each backslash is doubled because the value itself knows escapes,
/// and a percent sign is doubled.
std::string quotedWord(std::string_view word) {
    constexpr std::string_view special = "\"`$\\";
    std::string quoted{'"'};
    for (const char character : word) {
        if (character == '%') {
            quoted += "%%";
        } else if (character == '\n') {
            quoted += "\\n";
        } else if (special.find(character) == std::string_view::npos) {
            quoted += character;
        } else {
            quoted += character == '\\' ? "\\\\\\\\" : std::string{"\\\\"} + character;
        }
    }
    return quoted + '"';
}

/// A word with doubled percent signs made single.
std::string withoutFieldEscapes(std::string word) {
    for (std::size_t at = word.find("%%"); at != std::string::npos; at = word.find("%%", at + 1)) {
        word.erase(at, 1);
    }
    return word;
}

bool isSwitchedOff(std::string_view text) {
    bool isOff = false;
    forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group == "Desktop Entry") {
            isOff = isOff || (key == "Hidden" && value == "true") ||
                    (key == "X-GNOME-Autostart-enabled" && value == "false");
        }
    });
    return isOff;
}

} // namespace

std::string autostartText(std::string_view program) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Pacelet\n"
           "Comment=Tells why this machine is slow\n"
           "Exec=" +
           quotedWord(program) + std::string{trayOnly} +
           "\n"
           "Icon=app.pacelet.Pacelet\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

LoginItemStatus autostartStatus(std::string_view text, std::string_view program) {
    const auto entry = parseDesktopEntry(text);
    const auto words = entry ? splitExecLine(entry->exec) : std::vector<std::string>{};
    if (words.empty() || withoutFieldEscapes(words.front()) != program) {
        return LoginItemStatus::notRegistered;
    }
    return isSwitchedOff(text) ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled;
}

AutostartEntry::AutostartEntry(const std::string& configFolder, std::string program)
    : path_{joinedPath(configFolder, "autostart/app.pacelet.Pacelet.desktop")},
      program_{std::move(program)} {}

bool AutostartEntry::registerProgram() {
    return !program_.empty() && !replaceFile(path_, autostartText(program_), Outlives::crash);
}

void AutostartEntry::renew() {
    std::string text;
    const std::string today = autostartText(program_);
    std::string former = today;
    former.erase(former.rfind(trayOnly), trayOnly.size());
    if (!readFile(path_, mostBytes, text) && text == former) {
        // Where it cannot be written, the entry opens the window as before.
        static_cast<void>(replaceFile(path_, today, Outlives::crash));
    }
}

bool AutostartEntry::unregisterProgram() {
    return ::unlink(path_.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
}

LoginItemStatus AutostartEntry::status() {
    std::string text;
    return readFile(path_, mostBytes, text) ? LoginItemStatus::notRegistered
                                            : autostartStatus(text, program_);
}

} // namespace pacelet::Linux
