#include "Hosts/Linux/LinuxHost.h"

#include "Hosts/Linux/Network/NettopTool.h"

namespace pacelet::Linux {

LinuxHost::LinuxHost(const LinuxSettings& settings)
    : kernel_{settings.procFolder, settings.sysFolder, clock_},
      ps_{settings.procFolder, settings.places, clock_}, networkLink_{settings.sysFolder} {
    tools_.answer("/bin/ps",
                  [this](const std::vector<std::string>& arguments) { return ps_.run(arguments); });
    tools_.answer("/usr/bin/nettop",
                  [procFolder = settings.procFolder](const std::vector<std::string>& arguments) {
                      return NettopTool::run(arguments, procFolder);
                  });
}

} // namespace pacelet::Linux
