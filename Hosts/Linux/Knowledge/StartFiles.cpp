#include "Hosts/Linux/Knowledge/StartFiles.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/AppTables.h"
#include "Hosts/Linux/Apps/ExecLine.h"
#include "Hosts/Linux/Apps/ProgramSearch.h"
#include "Hosts/Linux/Desktop/KeyFile.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace pacelet::Linux {

std::string startedProgram(std::string_view command) {
    command.remove_prefix(std::min(command.find_first_not_of("@-:+!| "), command.size()));
    const std::vector<std::string> words = execCommand(command);
    if (words.empty() ||
        AppTables::contains(AppTables::wrappers, lastPathComponent(words.front())) ||
        AppTables::contains(AppTables::interpreters, lastPathComponent(words.front()))) {
        return {};
    }
    return words.front();
}

namespace {

constexpr std::size_t largestStartFile = std::size_t{1} << 20;
constexpr std::size_t nobodys = static_cast<std::size_t>(-1);

void takeEntryKey(StartFile& file, std::string_view key, std::string_view value) {
    if (key == "Name") {
        file.name = value;
    } else if (key == "GenericName") {
        file.kind = value;
    } else if (key == "Comment") {
        file.comment = value;
    } else if (key == "Exec") {
        file.program = startedProgram(value);
    } else if ((key == "NoDisplay" || key == "Hidden") && value == "true") {
        file.starter = Starter::nobody;
    } else if (key == "Type" && value != "Application") {
        file.starter = Starter::nobody;
        file.program.clear();
    }
}

void takeServiceKey(StartFile& file, std::string_view key, std::string_view value) {
    if (key == "Description") {
        file.comment = value;
    } else if (key == "ExecStart" && file.program.empty()) {
        file.program = startedProgram(value);
    } else if (key == "Type" && value == "oneshot") {
        file.isShortLived = true;
    }
}

bool isEntryFile(std::string_view name) {
    return name.ends_with(".desktop");
}

} // namespace

std::optional<StartFile> parseStartFile(std::string_view text) {
    StartFile file;
    file.starter = Starter::menu;
    bool isKnown = false;
    forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group == "Desktop Entry") {
            takeEntryKey(file, key, value);
        } else if (group == "Unit" || group == "Service") {
            takeServiceKey(file, key, value);
        } else if (group == "D-BUS Service" && key == "Exec") {
            file.program = startedProgram(value);
        } else {
            return;
        }
        isKnown = true;
    });
    return isKnown ? std::optional{std::move(file)} : std::nullopt;
}

std::vector<StartFolder> startFolders(const DesktopPlaces& places,
                                      const std::string& configFolder) {
    std::vector<StartFolder> folders;
    for (const std::string& path : places.entryFolders) {
        folders.push_back({path, Starter::menu});
    }
    folders.push_back({configFolder + "/autostart", Starter::person});
    folders.push_back({"/etc/xdg/autostart", Starter::session});
    folders.push_back({"/etc/systemd/system", Starter::system});
    folders.push_back({"/run/systemd/system", Starter::system});
    folders.push_back({"/usr/local/lib/systemd/system", Starter::system});
    folders.push_back({"/lib/systemd/system", Starter::system});
    folders.push_back({configFolder + "/systemd/user", Starter::person});
    folders.push_back({"/etc/systemd/user", Starter::session});
    folders.push_back({"/usr/lib/systemd/user", Starter::session});
    folders.push_back({"/usr/share/dbus-1/system-services", Starter::system});
    folders.push_back({"/usr/share/dbus-1/services", Starter::session});
    return folders;
}

StartFiles::StartFiles(const std::vector<StartFolder>& folders, const DesktopPlaces& places) {
    for (const StartFolder& folder : folders) {
        read(folder, places);
    }
}

void StartFiles::read(const StartFolder& folder, const DesktopPlaces& places) {
    std::string text;
    for (const std::string& name : sortedNames(folder.path)) {
        const bool isEntry = isEntryFile(name);
        if ((!isEntry && !name.ends_with(".service")) ||
            readFile(joinedPath(folder.path, name), largestStartFile, text)) {
            continue;
        }
        auto file = parseStartFile(text);
        if (!file) {
            continue;
        }
        file->id = withoutExtension(name);
        // An entry that no menu shows is nobody's among the menus, and counts at login all the
        // same.
        if (folder.starter != Starter::menu) {
            file->starter = folder.starter;
        }
        take(*std::move(file), isEntry, places);
    }
}

void StartFiles::take(StartFile file, bool isEntry, const DesktopPlaces& places) {
    const std::size_t place = files_.size();
    (isEntry ? entryIDs_ : serviceIDs_).try_emplace(file.id, place);
    const auto found = file.program.empty() || file.isShortLived
                           ? std::nullopt
                           : findProgram(file.program, places.searchPath);
    if (found) {
        std::error_code error;
        const auto real = std::filesystem::canonical(*found, error);
        const std::string program = error ? *found : real.string();
        const auto [starter, isFirst] = starters_.try_emplace(program, file.starter);
        if (!isFirst) {
            starter->second = std::min(starter->second, file.starter);
        }
        const auto [held, isNew] = (isEntry ? entries_ : services_).try_emplace(program, place);
        if (!isNew && held->second != nobodys && !file.comment.empty()) {
            StartFile& other = files_[held->second];
            // The bus names a service without describing it.
            if (other.comment.empty() || (isEntry && file.starter < other.starter)) {
                held->second = place;
            } else if (!isEntry && other.comment != file.comment && other.id != file.id) {
                held->second = nobodys;
            }
        }
    }
    files_.push_back(std::move(file));
}

const StartFile* StartFiles::find(const Places& places, const std::string& key) const {
    const auto found = places.find(key);
    return found == places.end() || found->second == nobodys ? nullptr : &files_[found->second];
}

const StartFile* StartFiles::entryOf(const std::string& program) const {
    return find(entries_, program);
}

const StartFile* StartFiles::serviceOf(const std::string& program) const {
    return find(services_, program);
}

const StartFile* StartFiles::entryNamed(const std::string& id) const {
    return find(entryIDs_, id);
}

const StartFile* StartFiles::serviceNamed(const std::string& id) const {
    return find(serviceIDs_, id);
}

std::optional<Starter> StartFiles::starterOf(const std::string& program) const {
    const auto found = starters_.find(program);
    return found == starters_.end() ? std::nullopt : std::optional{found->second};
}

} // namespace pacelet::Linux
