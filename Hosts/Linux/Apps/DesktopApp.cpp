#include "Hosts/Linux/Apps/DesktopApp.h"

#include "Core/Platform/ProcessSample.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/AppTables.h"

#include <algorithm>
#include <array>

namespace pacelet::Linux {

namespace {

/// A program's name in lower case without the endings that tell a program from its start script.
std::string stem(std::string_view program) {
    constexpr std::array<std::string_view, 6> endings{".bin",  "-bin",    ".sh",
                                                      ".real", "-stable", ".AppImage"};
    std::string_view name = executableName(program);
    for (const std::string_view ending : endings) {
        if (name.size() > ending.size() && name.ends_with(ending)) {
            name.remove_suffix(ending.size());
        }
    }
    return asciiLowercased(name);
}

std::string_view parentFolder(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos || slash == 0 ? std::string_view{}
                                                         : path.substr(0, slash);
}

bool isShared(std::string_view folder, std::string_view home) {
    return folder.empty() || folder == home ||
           AppTables::contains(AppTables::sharedFolders, folder) ||
           AppTables::contains(AppTables::sharedFolderNames, executableName(folder)) ||
           // The home of any user.
           (folder.starts_with("/home/") && folder.find('/', 6) == std::string_view::npos);
}

} // namespace

std::string bundlePath(const DesktopApp& app) {
    // What lies below "/System" is never offered to be quit.
    const bool isContainer = app.id.starts_with("container:");
    return (isContainer ? "/System/Containers/" : "/Applications/") + app.name + ".app";
}

std::string bundleName(std::string_view desktopID, std::string_view entryName) {
    const auto known =
        std::find_if(AppTables::knownNames.begin(), AppTables::knownNames.end(),
                     [&](const AppTables::KnownName& row) { return row.desktopID == desktopID; });
    if (known != AppTables::knownNames.end()) {
        return std::string{known->name};
    }
    std::string name{entryName};
    for (char& character : name) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '/') {
            character = '-';
        } else if (byte < 0x20 || byte == 0x7F) {
            character = ' ';
        }
    }
    return repairedUTF8(std::string{trimmed(name)});
}

std::string privateFolder(std::string_view program, std::string_view home) {
    const std::string_view folder = parentFolder(program);
    if (!isShared(folder, home)) {
        return std::string{folder};
    }
    // A start script in the "bin" of the application's own folder, such as
    // "/opt/thing-2/bin/thing".
    const std::string_view above = parentFolder(folder);
    const bool isOwn = executableName(folder) == "bin" && !isShared(above, home) &&
                       asciiLowercased(executableName(above)).starts_with(stem(program));
    return isOwn ? std::string{above} : std::string{};
}

bool isMainProgram(const DesktopApp& app, std::string_view executable) {
    constexpr std::size_t shortestTelling = 2;
    if (executable == app.program) {
        return true;
    }
    if (app.folder.empty() || !executable.starts_with(app.folder + '/')) {
        return false;
    }
    const std::string name = stem(executable);
    return name.size() >= shortestTelling &&
           (name == stem(app.program) ||
            asciiLowercased(executableName(app.folder)).starts_with(name));
}

} // namespace pacelet::Linux
