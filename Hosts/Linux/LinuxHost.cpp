#include "Hosts/Linux/LinuxHost.h"

#include "Core/Platform/BundlePath.h"
#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Browser/OSAScriptTool.h"
#include "Hosts/Linux/Desktop/SettingsPanels.h"
#include "Hosts/Linux/Hardware/SystemProfilerTool.h"
#include "Hosts/Linux/Network/NettopTool.h"
#include "Hosts/Linux/Systemd/LaunchctlTool.h"
#include "Hosts/Linux/X11/WindowList.h"

#include <unistd.h>

namespace pacelet::Linux {

namespace {

using Arguments = std::vector<std::string>;

DesktopWorkspace::Settings workspaceSettings(const LinuxSettings& settings) {
    const auto closeWindows = [display = settings.display](const std::vector<std::int32_t>& pids) {
        const X11::Connection connection{display};
        return connection && X11::requestClose(connection, pids);
    };
    const auto hasWindows = [display = settings.display](const std::vector<std::int32_t>& pids) {
        const X11::Connection connection{display};
        return connection && X11::canRequestClose(connection, pids);
    };
    const auto overBus = [places = settings.places](const AppInstance& app,
                                                    const std::vector<std::int32_t>& pids,
                                                    Asking asking) {
        return quitOverBus(app.bundleIdentifier, pids, places, asking);
    };
    return {settings.procFolder,
            settings.places,
            IconPlaces::from(settings.places, settings.configFolder),
            closeWindows,
            settings.postToUI,
            {hasWindows, overBus}};
}

ExtensionRegistry::Settings registrySettings(const LinuxSettings& settings) {
    return {settings.systemRoot, settings.bridgeProgram, settings.extensionFolder,
            settings.postToUI};
}

BrowserConnections::Settings connectionSettings(const LinuxSettings& settings, PSTool& processes) {
    return {settings.runtimeFolder, settings.configFolder, settings.procFolder,
            [&processes] { return processes.appProcesses(::getuid()); }};
}

} // namespace

LinuxHost::LinuxHost(const LinuxSettings& settings)
    : kernel_{settings.procFolder, settings.sysFolder, settings.runFolder, clock_,
              [this](std::int32_t pid) { return ps_.memory(pid); }},
      ps_{settings.procFolder, settings.places, clock_},
      knowledge_{{settings.places, startFolders(settings.places, settings.configFolder)},
                 [this](auto questions) { return ps_.origins(questions); }},
      networkQuality_{settings.speedServer},
      networkLink_{settings.sysFolder},
      browsers_{registrySettings(settings), connectionSettings(settings, ps_)},
      workspace_{workspaceSettings(settings), ps_},
      backgroundItems_{DesktopItems::Sources::standard(settings.places, settings.configFolder,
                                                       settings.dataFolder),
                       [this] { return workspace_.index(); }},
      windowServer_{settings.display, [this] { return applicationNames(); }},
      loginItems_{settings.configFolder, settings.program},
      log_{settings.journalSocket},
      preferences_{joinedPath(settings.configFolder, "pacelet/preferences.json"), log_,
                   settings.postToUI},
      home_{settings.places.home},
      applicationSupport_{settings.dataFolder},
      abilities_{desktopAbilities(settings.places)} {
    abilities_.restarts = SessionRestart::isPossible();
    abilities_.alwaysAsks = false;
    answerTools(settings);
}

void LinuxHost::answerTools(const LinuxSettings& settings) {
    tools_.answer("/bin/ps", [this](const Arguments& arguments) { return ps_.run(arguments); });
    tools_.answer("/usr/bin/osascript", [this](const Arguments& arguments) {
        return OSAScriptTool::run(arguments, browsers_.connections(), restart_);
    });
    tools_.answer("/usr/bin/nettop", [procFolder = settings.procFolder,
                                      sysFolder = settings.sysFolder](const Arguments& arguments) {
        return NettopTool::run(arguments, procFolder, sysFolder);
    });
    tools_.answer("/usr/bin/networkQuality",
                  [this](const Arguments& arguments) { return networkQuality_.run(arguments); });
    const LaunchctlTool::Places places{settings.sysFolder + "/fs/cgroup", settings.procFolder,
                                       ::getuid()};
    tools_.answer("/bin/launchctl", [places](const Arguments& arguments) {
        return LaunchctlTool::run(arguments, places);
    });
    tools_.answer("/usr/sbin/system_profiler", [this, procFolder = settings.procFolder,
                                                sysFolder = settings.sysFolder](
                                                   const Arguments& arguments) {
        return SystemProfilerTool::run(arguments, procFolder, sysFolder, kernel_.physicalMemory());
    });
}

std::unordered_map<std::int32_t, std::string> LinuxHost::applicationNames() {
    std::unordered_map<std::int32_t, std::string> names;
    for (const AppProcess& process : ps_.appProcesses(::getuid())) {
        const auto bundle = outermostApp(process.path).value_or(process.path);
        names.emplace(process.identity.pid, withoutExtension(lastPathComponent(bundle)));
    }
    return names;
}

std::optional<std::string_view> LinuxHost::whyThere(std::int32_t pid, const std::string& path) {
    const auto origin = ps_.origins(std::vector{ProgramQuestion{pid, path}}).front();
    return origin ? std::optional{describe(origin->reason)} : std::nullopt;
}

Platform LinuxHost::platform() {
    return {clock_,      tools_,       kernel_,
            workspace_,  networkLink_, windowServer_,
            loginItems_, preferences_, log_,
            home_,       "/",          applicationSupport_,
            system,      &knowledge_,  &backgroundItems_,
            &browsers_,  abilities_};
}

} // namespace pacelet::Linux
