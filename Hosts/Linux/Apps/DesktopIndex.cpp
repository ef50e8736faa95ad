#include "Hosts/Linux/Apps/DesktopIndex.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <utility>

namespace pacelet::Linux {

DesktopIndex::DesktopIndex(std::vector<DesktopApp> apps)
    : apps_{std::move(apps)} {
    makeNamesUnique();
    dropSharedFolders();
    for (std::size_t place = 0; place < apps_.size(); ++place) {
        byID_.try_emplace(apps_[place].id, place);
        prefer(byProgram_, apps_[place].program, place);
        prefer(byFolder_, apps_[place].folder, place);
    }
}

void DesktopIndex::makeNamesUnique() {
    std::unordered_map<std::string, std::string> programOfName;
    for (DesktopApp& app : apps_) {
        const std::string program = app.program.empty() ? app.id : app.program;
        const auto [owner, isNew] = programOfName.try_emplace(app.name, program);
        if (!isNew && owner->second != program) {
            app.name += " (" + app.id + ")";
        }
    }
}

void DesktopIndex::dropSharedFolders() {
    std::unordered_map<std::string, const std::string*> programOfFolder;
    for (const DesktopApp& app : apps_) {
        const auto [owner, isNew] = programOfFolder.try_emplace(app.folder, &app.program);
        if (!isNew && owner->second != nullptr && *owner->second != app.program) {
            owner->second = nullptr;
        }
    }
    for (DesktopApp& app : apps_) {
        if (programOfFolder.at(app.folder) == nullptr) {
            app.folder.clear();
        }
    }
}

void DesktopIndex::prefer(Places& places, const std::string& key, std::size_t place) {
    if (key.empty()) {
        return;
    }
    const auto [held, isNew] = places.try_emplace(key, place);
    if (!isNew && apps_[place].argumentCount < apps_[held->second].argumentCount) {
        held->second = place;
    }
}

const DesktopApp* DesktopIndex::find(const Places& places, std::string_view key) const {
    const auto found = places.find(key);
    return found == places.end() ? nullptr : &apps_[found->second];
}

const DesktopApp* DesktopIndex::byID(std::string_view id) const {
    return find(byID_, id);
}

const DesktopApp* DesktopIndex::byProgram(std::string_view executable) const {
    return find(byProgram_, executable);
}

const DesktopApp* DesktopIndex::bySwitch(std::string_view executable,
                                         std::string_view commandLine) const {
    const std::string_view folder = executable.substr(0, executable.rfind('/'));
    for (const std::string_view argument : splitDroppingEmpty(commandLine, '\0')) {
        const auto found = std::ranges::find_if(apps_, [&](const DesktopApp& app) {
            return app.folder == folder && !app.argument.empty() && app.argument == argument;
        });
        if (found != apps_.end()) {
            return &*found;
        }
    }
    return nullptr;
}

const DesktopApp* DesktopIndex::byFolder(std::string_view executable) const {
    for (std::size_t slash = executable.rfind('/'); slash != std::string_view::npos && slash > 0;
         slash = executable.rfind('/', slash - 1)) {
        if (const DesktopApp* app = find(byFolder_, executable.substr(0, slash))) {
            return app;
        }
    }
    return nullptr;
}

} // namespace pacelet::Linux
