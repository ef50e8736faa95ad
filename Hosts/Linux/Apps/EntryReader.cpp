#include "Hosts/Linux/Apps/EntryReader.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/AppTables.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"
#include "Hosts/Linux/Apps/ExecLine.h"
#include "Hosts/Linux/Apps/ProgramSearch.h"

#include <array>
#include <climits>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace pacelet::Linux {

namespace {

constexpr std::string_view snapPrograms = "/snap/bin/";

std::optional<std::string> readText(const std::string& file) {
    std::ifstream stream{file, std::ios::binary};
    if (!stream) {
        return std::nullopt;
    }
    return std::string{std::istreambuf_iterator<char>{stream}, std::istreambuf_iterator<char>{}};
}

bool isExecutable(const std::string& path) {
    return ::access(path.c_str(), X_OK) == 0;
}

/// The path with all links resolved, or the path itself when that fails.
std::string resolved(const std::string& path) {
    std::array<char, PATH_MAX> real;
    return ::realpath(path.c_str(), real.data()) != nullptr ? std::string{real.data()} : path;
}

bool isScript(const std::string& path) {
    std::ifstream stream{path, std::ios::binary};
    return stream.get() == '#' && stream.get() == '!';
}

bool isStarter(std::string_view program) {
    const std::string_view name = lastPathComponent(program);
    return AppTables::contains(AppTables::wrappers, name) ||
           AppTables::contains(AppTables::interpreters, name);
}

} // namespace

std::optional<DesktopApp> EntryReader::read(const std::string& file, std::string id) const {
    const auto text = readText(file);
    const auto entry = text ? parseDesktopEntry(*text) : std::nullopt;
    if (!entry || !isInMenu(*entry, places_.desktops) || entry->runsInTerminal ||
        (!entry->tryExec.empty() && !findProgram(entry->tryExec, places_.searchPath))) {
        return std::nullopt;
    }
    const std::vector<std::string> command = execCommand(entry->exec);
    const auto program =
        command.empty() ? std::nullopt : findProgram(command.front(), places_.searchPath);
    DesktopApp app;
    app.name = bundleName(id, entry->name);
    if (!program || app.name.empty()) {
        return std::nullopt;
    }
    app.id = std::move(id);
    app.argumentCount = command.size() - 1;
    for (const std::string& category : entry->categories) {
        app.isTerminal = app.isTerminal || category == "TerminalEmulator";
    }
    placeProgram(app, *program);
    return app;
}

void EntryReader::placeProgram(DesktopApp& app, const std::string& program) const {
    if (program.starts_with(snapPrograms)) {
        // All of these are links to one program, which starts what lies in the folder of the name.
        const std::string_view name = std::string_view{program}.substr(snapPrograms.size());
        app.folder = std::string{"/snap/"}.append(name.substr(0, name.find('.')));
        return;
    }
    const std::string real = resolved(program);
    if (isStarter(program) || isStarter(real)) {
        return;
    }
    app.folder = privateFolder(real, places_.home);
    const bool script = isScript(real);
    if (!script || !app.folder.empty()) {
        app.program = real;
    } else {
        placeCompanion(app, real);
    }
}

/// A start script in a shared folder: the program itself lies in a folder of the same name.
void EntryReader::placeCompanion(DesktopApp& app, const std::string& script) const {
    const std::string name{lastPathComponent(script)};
    for (const std::string_view parent : AppTables::companionParents) {
        const std::string folder = std::string{parent} + name;
        for (const std::string_view ending : {"", "-bin", ".bin"}) {
            const std::string program = (folder + '/' + name).append(ending);
            if (isExecutable(program)) {
                app.folder = folder;
                app.program = resolved(program);
                return;
            }
        }
    }
}

} // namespace pacelet::Linux
