#pragma once

#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/LinuxKernel.h"
#include "Hosts/Linux/LinuxToolRunner.h"
#include "Hosts/Linux/Network/NetworkLink.h"
#include "Hosts/Linux/PSTool.h"
#include "Hosts/Linux/SystemClock.h"

#include <string>

namespace pacelet::Linux {

/// Where a Linux machine is read.
struct LinuxSettings {
    std::string procFolder = "/proc";
    std::string sysFolder = "/sys";
    DesktopPlaces places = DesktopPlaces::fromEnvironment();
};

/// This machine, live. Owns the services that Core asks; the references live as long as it does.
class LinuxHost {
public:
    explicit LinuxHost(const LinuxSettings& settings = {});

    Clock& clock() { return clock_; }
    ToolRunner& tools() { return tools_; }
    Kernel& kernel() { return kernel_; }
    pacelet::NetworkLink& networkLink() { return networkLink_; }

private:
    SystemClock clock_;
    LinuxKernel kernel_;
    PSTool ps_;
    LinuxToolRunner tools_;
    NetworkLink networkLink_;
};

} // namespace pacelet::Linux
