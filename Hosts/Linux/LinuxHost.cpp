#include "Hosts/Linux/LinuxHost.h"

namespace pacelet::Linux {

LinuxHost::LinuxHost(const LinuxSettings& settings)
    : kernel_{settings.procFolder, settings.sysFolder, clock_}, ps_{settings.procFolder,
                                                                    settings.places, clock_} {
    tools_.answer("/bin/ps",
                  [this](const std::vector<std::string>& arguments) { return ps_.run(arguments); });
}

} // namespace pacelet::Linux
