#include "Hosts/Linux/Apps/AppAssociation.h"

#include "Core/Platform/ProcessSample.h"
#include "Core/Support/EnumTable.h"
#include "Hosts/Linux/Apps/AppScope.h"
#include "Hosts/Linux/Apps/AppTables.h"

namespace pacelet::Linux {

namespace {

struct ReasonRow {
    AssociationReason value;
    std::string_view description;
};

constexpr std::array reasonTable{
    ReasonRow{AssociationReason::kernelThread, "It is part of the kernel."},
    ReasonRow{AssociationReason::service, "It is a service that the whole session shares."},
    ReasonRow{AssociationReason::sessionPart, "It is a part of the desktop itself."},
    ReasonRow{AssociationReason::insideTerminal, "It was started inside a terminal."},
    ReasonRow{AssociationReason::noApplication, "No application in the menu owns it."},
    ReasonRow{AssociationReason::appScope,
              "It runs in the scope that was made for the application."},
    ReasonRow{AssociationReason::entryProgram, "It is the program that the menu entry starts."},
    ReasonRow{AssociationReason::entryFolder, "Its program lies in the application's own folder."},
    ReasonRow{AssociationReason::box, "It runs inside of the same AppImage, Flatpak or Snap."},
    ReasonRow{AssociationReason::container, "It runs inside of the same container."},
};

/// The id of the application to which this program belongs under another name; mostly empty.
std::string_view companionID(std::string_view executable) {
    for (const AppTables::Companion& companion : AppTables::companions) {
        if (companion.program == executableName(executable)) {
            return companion.desktopID;
        }
    }
    return {};
}

bool isCompanion(const DesktopApp& app, std::string_view executable) {
    return companionID(executable) == app.id;
}

/// By the program alone.
Association ownAssociation(const DesktopIndex& index, const ProcessFacts& facts) {
    const std::string_view executable = facts.executable;
    if (AppTables::contains(AppTables::suites, executableName(executable))) {
        if (const DesktopApp* app = index.bySwitch(executable, facts.commandLine)) {
            return {AssociationReason::entryProgram, app};
        }
    }
    if (const DesktopApp* app = index.byProgram(executable)) {
        return {AssociationReason::entryProgram, app};
    }
    if (const DesktopApp* app = index.byID(companionID(executable))) {
        return {AssociationReason::entryProgram, app};
    }
    if (const DesktopApp* app = index.byFolder(executable)) {
        return {AssociationReason::entryFolder, app};
    }
    return {};
}

const DesktopApp* scopeApp(const DesktopIndex& index, std::string_view cgroup) {
    for (const std::string& id : appScopeIDs(cgroup)) {
        if (const DesktopApp* app = index.byID(id)) {
            return app;
        }
    }
    return nullptr;
}

/// Several entries may start one application in different ways.
bool isSameApplication(const DesktopApp& left, const DesktopApp& right) {
    return left.id == right.id || (!left.program.empty() && left.program == right.program) ||
           (!left.folder.empty() && left.folder == right.folder);
}

/// What a shell or the like runs is a start script, and leads nothing.
bool isStartScript(std::string_view executable, std::string_view starter) {
    return AppTables::contains(AppTables::wrappers,
                               starter.empty() ? executableName(executable) : starter);
}

AppRole roleOf(const Association& association, const ProcessFacts& facts) {
    const DesktopApp& app = *association.app;
    const bool parentIsMember = facts.parentAppID == app.id;
    if (isMainProgram(app, facts.executable) || isCompanion(app, facts.executable)) {
        // Browsers and the like run their helpers from the very same program.
        const bool isChild = parentIsMember && isMainProgram(app, facts.parentExecutable);
        return isChild ? AppRole::helper : AppRole::main;
    }
    // Nothing is known of the program when the entry starts a script.
    const bool isUnknown = app.program.empty() && app.folder.empty();
    return association.reason == AssociationReason::appScope && isUnknown ? roleInBox(facts, app.id)
                                                                          : AppRole::helper;
}

} // namespace

AppRole roleInBox(const ProcessFacts& facts, std::string_view appID) {
    const bool leads =
        !isStartScript(facts.executable, facts.starter) &&
        (facts.parentAppID != appID || isStartScript(facts.parentExecutable, facts.parentStarter));
    return leads ? AppRole::main : AppRole::helper;
}

std::string_view describe(AssociationReason reason) {
    return rowOf(reasonTable, reason).description;
}

Association associate(const DesktopIndex& index, const ProcessFacts& facts) {
    const std::string_view name = executableName(facts.executable);
    if (AppTables::contains(AppTables::sessionParts, name)) {
        return {AssociationReason::sessionPart};
    }
    if (AppTables::contains(AppTables::services, name)) {
        return {AssociationReason::service};
    }
    Association association = ownAssociation(index, facts);
    if (const DesktopApp* scope = scopeApp(index, facts.cgroup)) {
        if (association.app != nullptr && !isSameApplication(*association.app, *scope)) {
            // It keeps to its own application.
        } else if (!scope->isTerminal && !facts.hasTerminal) {
            association = {AssociationReason::appScope, scope};
        } else if (association.app == nullptr) {
            association.reason = AssociationReason::insideTerminal;
        }
    }
    if (association.app != nullptr) {
        association.role = roleOf(association, facts);
    }
    return association;
}

std::string bundledPath(const Association& association, std::string_view executable,
                        std::string_view part) {
    if (association.app == nullptr) {
        return std::string{executable};
    }
    const bool isMain = association.role == AppRole::main;
    std::string path = bundlePath(*association.app);
    path.append(isMain ? "/Contents/MacOS/" : "/Contents/Frameworks/");
    path.append(executableName(executable));
    return isMain || part.empty() ? path : path.append(" (").append(part).append(")");
}

} // namespace pacelet::Linux
