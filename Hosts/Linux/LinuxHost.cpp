#include "Hosts/Linux/LinuxHost.h"

#include "Core/Sampling/AppGrouper.h"
#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
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
    return {settings.procFolder, settings.places,
            IconPlaces::from(settings.places, settings.configFolder), closeWindows,
            settings.postToUI};
}

} // namespace

LinuxHost::LinuxHost(const LinuxSettings& settings)
    : kernel_{settings.procFolder, settings.sysFolder, clock_}, ps_{settings.procFolder,
                                                                    settings.places, clock_},
      networkLink_{settings.sysFolder}, workspace_{workspaceSettings(settings), ps_},
      windowServer_{settings.display, [this] { return applicationNames(); }},
      loginItems_{settings.configFolder, settings.program},
      preferences_{joinedPath(settings.configFolder, "pacelet/preferences.json")},
      log_{settings.journalSocket}, home_{settings.places.home}, applicationSupport_{
                                                                     settings.dataFolder} {
    answerTools(settings);
}

void LinuxHost::answerTools(const LinuxSettings& settings) {
    tools_.answer("/bin/ps", [this](const Arguments& arguments) { return ps_.run(arguments); });
    tools_.answer("/usr/bin/nettop",
                  [procFolder = settings.procFolder](const Arguments& arguments) {
                      return NettopTool::run(arguments, procFolder);
                  });
    const LaunchctlTool::Places places{settings.sysFolder + "/fs/cgroup", settings.procFolder,
                                       ::getuid()};
    tools_.answer("/bin/launchctl", [places](const Arguments& arguments) {
        return LaunchctlTool::run(arguments, places);
    });
    tools_.answer("/usr/sbin/system_profiler",
                  [procFolder = settings.procFolder,
                   sysFolder = settings.sysFolder](const Arguments& arguments) {
                      return SystemProfilerTool::run(arguments, procFolder, sysFolder);
                  });
}

std::unordered_map<std::int32_t, std::string> LinuxHost::applicationNames() {
    std::unordered_map<std::int32_t, std::string> names;
    for (const AppProcess& process : ps_.appProcesses(::getuid())) {
        const auto bundle = AppGrouper::outermostApp(process.path).value_or(process.path);
        names.emplace(process.identity.pid, withoutExtension(lastPathComponent(bundle)));
    }
    return names;
}

Platform LinuxHost::platform() {
    return {clock_,      tools_,       kernel_, workspace_, networkLink_, windowServer_,
            loginItems_, preferences_, log_,    home_,      "/",          applicationSupport_};
}

} // namespace pacelet::Linux
