#include "Hosts/Linux/Background/DesktopItems.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/AppAssociation.h"
#include "Hosts/Linux/Apps/AppTables.h"
#include "Hosts/Linux/Apps/ExecLine.h"
#include "Hosts/Linux/Apps/ProgramSearch.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace pacelet::Linux {

namespace {

constexpr std::string_view entryEnding = ".desktop";

/// A shell or interpreter tells nothing of what it runs.
bool isTelling(std::string_view program) {
    const std::string_view name = lastPathComponent(program);
    return !AppTables::contains(AppTables::wrappers, name) &&
           !AppTables::contains(AppTables::interpreters, name);
}

/// What one sets up for oneself is one's own; what runs for everybody belongs to the desktop.
ProgramRole roleOf(ItemScope scope) {
    return scope == ItemScope::systemAgent ? ProgramRole::session : ProgramRole::program;
}

} // namespace

DesktopItems::Sources DesktopItems::Sources::standard(const DesktopPlaces& places,
                                                      const std::string& configFolder,
                                                      const std::string& dataFolder) {
    Sources sources{places,
                    configFolder,
                    {},
                    UnitFolders::ofSystem(),
                    UnitFolders::ofUser(configFolder, dataFolder)};
    const char* const told = std::getenv("XDG_CONFIG_DIRS");
    const std::string folders = told != nullptr && *told != '\0' ? told : "/etc/xdg";
    for (const std::string_view folder : splitDroppingEmpty(folders, ':')) {
        sources.autostartFolders.push_back(joinedPath(folder, "autostart"));
    }
    return sources;
}

std::vector<BackgroundItem> DesktopItems::items() {
    const auto apps = findApps_();
    const std::lock_guard lock{mutex_};
    std::vector<Found> found;
    addAutostart(found);
    addUnits(sources_.userUnits, found);
    addUnits(sources_.systemUnits, found);
    entries_.endRound();
    units_.endRound();
    learnOwners(found);
    std::vector<BackgroundItem> items;
    for (Found& each : found) {
        if (!isHidden(each)) {
            items.push_back(finished(std::move(each), *apps));
        }
    }
    return items;
}

void DesktopItems::addAutostart(std::vector<Found>& found) {
    std::vector<std::string> names; // an entry hides all of the same name in later folders
    addAutostartFolder(joinedPath(sources_.configFolder, "autostart"), ItemScope::userAgent, names,
                       found);
    for (const std::string& folder : sources_.autostartFolders) {
        addAutostartFolder(folder, ItemScope::systemAgent, names, found);
    }
}

void DesktopItems::addAutostartFolder(const std::string& folder, ItemScope scope,
                                      std::vector<std::string>& names, std::vector<Found>& found) {
    const AutostartPlace place{sources_.places.desktops, sources_.places.searchPath,
                               sources_.configFolder};
    for (const std::string& name : sortedNames(folder)) {
        if (!name.ends_with(entryEnding) || std::ranges::find(names, name) != names.end()) {
            continue;
        }
        names.push_back(name);
        const std::string path = joinedPath(folder, name);
        const AutostartFile* const file =
            entries_.get(path, [](const std::string& text) { return parseAutostartFile(text); });
        if (file == nullptr || !startsAtLogin(*file, place)) {
            continue;
        }
        Found& each = found.emplace_back();
        each.appID = withoutExtension(name);
        each.program = resolvedProgram(execCommand(file->entry.exec).front());
        each.item.label = repairedUTF8(each.appID);
        each.item.source = path;
        each.item.scope = scope;
        each.item.runAtLoad = true;
        ProgramFacts& facts = each.item.facts.emplace();
        facts.role = isDesktopPart(*file) ? roleOf(scope) : ProgramRole::program;
        facts.entryName = repairedUTF8(file->entry.name);
        facts.entryComment = repairedUTF8(file->comment);
    }
}

void DesktopItems::addUnits(const UnitFolders& folders, std::vector<Found>& found) {
    for (const EnabledUnit& unit : enabledUnits(folders, units_)) {
        const UnitFile& acting = unit.started ? *unit.started : unit.file;
        Found& each = found.emplace_back();
        each.program = resolvedProgram(acting.program);
        each.item.label = repairedUTF8(unit.name);
        each.item.source = unit.path;
        each.item.scope = unit.scope;
        each.item.runAtLoad = unit.name.ends_with(".service");
        each.item.keepAlive = acting.isRestarted.value_or(false);
        ProgramFacts& facts = each.item.facts.emplace();
        facts.role = roleOf(unit.scope);
        facts.unit = repairedUTF8(std::string{withoutExtension(unit.name)});
        facts.unitDescription = repairedUTF8(filledIn(unit.file.description, unit.name));
    }
}

std::string DesktopItems::resolvedProgram(const std::string& program) const {
    const auto path = program.empty() || !isTelling(program)
                          ? std::nullopt
                          : findProgram(program, sources_.places.searchPath);
    if (!path) {
        return {};
    }
    std::error_code error;
    const auto real = std::filesystem::canonical(*path, error);
    return error || !isTelling(real.native()) ? *path : real.string();
}

void DesktopItems::learnOwners(const std::vector<Found>& found) {
    std::vector<std::string> paths;
    for (const Found& each : found) {
        paths.push_back(each.item.source);
        paths.push_back(each.program);
    }
    owners_.learn(paths);
}

const Package* DesktopItems::packageOf(const Found& found) const {
    const Package* const package = owners_.of(found.item.source);
    return package != nullptr ? package : owners_.of(found.program);
}

bool DesktopItems::isHidden(const Found& found) const {
    return found.item.scope == ItemScope::systemDaemon &&
           isOfBaseSystem(found.item.label, packageOf(found));
}

BackgroundItem DesktopItems::finished(Found found, const DesktopIndex& apps) const {
    const Package* const package = packageOf(found);
    BackgroundItem item = std::move(found.item);
    Association association;
    if (!found.program.empty()) {
        association = associate(apps, {.executable = found.program});
        // As the process table has it.
        item.program = bundledPath(association, found.program);
    }
    const DesktopApp* const app =
        association.app != nullptr ? association.app : apps.byID(found.appID);
    if (package != nullptr) {
        item.facts->package = package->name;
        item.facts->packageDescription = package->description;
    }
    if (app != nullptr) {
        item.ownerApp = app->name;
    } else if (package != nullptr) {
        item.ownerApp = package->name;
    }
    return item;
}

} // namespace pacelet::Linux
