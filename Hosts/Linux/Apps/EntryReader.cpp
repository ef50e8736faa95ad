#include "Hosts/Linux/Apps/EntryReader.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/AppTables.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"
#include "Hosts/Linux/Apps/ExecLine.h"
#include "Hosts/Linux/Apps/ProgramSearch.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace pacelet::Linux {

namespace {

constexpr std::string_view snapPrograms = "/snap/bin/";

/// The path with all links resolved, or the path itself when that fails.
std::string resolved(const std::string& path) {
    std::array<char, PATH_MAX> real;
    return ::realpath(path.c_str(), real.data()) != nullptr ? std::string{real.data()} : path;
}

/// Name of the program that runs the script at `path`; empty for any other program.
std::string interpreterOf(const std::string& path) {
    constexpr std::string_view mark = "#!";
    constexpr std::size_t longestLine = 256;
    std::string line = readBeginning(path, longestLine);
    if (!line.starts_with(mark)) {
        return {};
    }
    line.resize(std::min(line.find('\n'), line.size()));
    const std::vector<std::string> command =
        execCommand(std::string_view{line}.substr(mark.size()));
    return command.empty() ? std::string{"sh"} : std::string{lastPathComponent(command.front())};
}

/// The script that the command gives to an interpreter; empty without one.
std::string scriptIn(const std::vector<std::string>& command) {
    const auto script = std::find_if(command.begin() + 1, command.end(),
                                     [](const auto& word) { return !word.starts_with('-'); });
    return script != command.end() && script->starts_with('/') ? *script : std::string{};
}

bool isStarter(std::string_view program) {
    const std::string_view name = lastPathComponent(program);
    return AppTables::contains(AppTables::wrappers, name) ||
           AppTables::contains(AppTables::interpreters, name);
}

} // namespace

std::optional<DesktopApp> EntryReader::read(const std::string& file, std::string id) const {
    std::string text;
    const auto entry =
        readFile(file, mostEntryBytes, text) ? std::nullopt : parseDesktopEntry(text);
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
    app.argument = command.size() == 2 ? command[1] : std::string{};
    for (const std::string& category : entry->categories) {
        app.isTerminal = app.isTerminal || category == "TerminalEmulator";
    }
    placeProgram(app, *program, command);
    return app;
}

void EntryReader::placeProgram(DesktopApp& app, const std::string& program,
                               const std::vector<std::string>& command) const {
    if (program.starts_with(snapPrograms)) {
        // All of these are links to one program, which starts what lies in the folder of the name.
        const std::string_view name = std::string_view{program}.substr(snapPrograms.size());
        app.folder = std::string{"/snap/"}.append(name.substr(0, name.find('.')));
        return;
    }
    const std::string real = resolved(program);
    if (isStarter(program) || isStarter(real)) {
        if (const std::string script = scriptIn(command);
            !script.empty() &&
            AppTables::contains(AppTables::interpreters, lastPathComponent(real))) {
            app.program = resolved(script);
        }
        return;
    }
    app.folder = privateFolder(real, places_.home);
    const std::string interpreter = interpreterOf(real);
    const bool isStartScript =
        !interpreter.empty() && !AppTables::contains(AppTables::interpreters, interpreter);
    if (!isStartScript || !app.folder.empty()) {
        app.program = real;
    } else {
        placeCompanion(app, real);
    }
    if (app.folder.empty() && !app.program.empty()) {
        app.folder = helperFolder(app);
    }
}

/// Where the helpers of a program in a shared folder lie: "/usr/lib/gimp" for "/usr/bin/gimp-2.10".
std::string EntryReader::helperFolder(const DesktopApp& app) {
    const std::string name{lastPathComponent(app.program)};
    const std::size_t hyphen = name.rfind('-');
    const bool isVersion = hyphen != std::string::npos && hyphen + 1 < name.size() &&
                           name[hyphen + 1] >= '0' && name[hyphen + 1] <= '9';
    for (const std::string_view parent : AppTables::helperParents) {
        for (const std::string& own : {name, isVersion ? name.substr(0, hyphen) : name}) {
            std::string folder = std::string{parent} + own;
            std::error_code error;
            if (std::filesystem::is_directory(folder, error)) {
                return folder;
            }
        }
    }
    return {};
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
