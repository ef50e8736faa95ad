#pragma once

#include "Core/Platform/Platform.h"
#include "Hosts/Linux/Desktop/DesktopWorkspace.h"
#include "Hosts/Linux/JournalLog.h"
#include "Hosts/Linux/LinuxKernel.h"
#include "Hosts/Linux/LinuxSettings.h"
#include "Hosts/Linux/LinuxToolRunner.h"
#include "Hosts/Linux/Network/NetworkLink.h"
#include "Hosts/Linux/PSTool.h"
#include "Hosts/Linux/SystemClock.h"
#include "Hosts/Linux/User/AutostartEntry.h"
#include "Hosts/Linux/User/PreferencesFile.h"
#include "Hosts/Linux/X11/WindowServer.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace pacelet::Linux {

/// This machine, live. Owns the services that Core asks; the references live as long as it does.
class LinuxHost {
public:
    explicit LinuxHost(const LinuxSettings& settings = {});

    Clock& clock() { return clock_; }
    ToolRunner& tools() { return tools_; }
    Kernel& kernel() { return kernel_; }
    pacelet::NetworkLink& networkLink() { return networkLink_; }

    /// All of it. "/" is the root, below which this machine has neither "Applications" nor
    /// "Library"; the folder of application data is that of XDG_DATA_HOME.
    Platform platform();

private:
    void answerTools(const LinuxSettings& settings);
    std::unordered_map<std::int32_t, std::string> applicationNames();

    SystemClock clock_;
    LinuxKernel kernel_;
    PSTool ps_;
    LinuxToolRunner tools_;
    NetworkLink networkLink_;
    DesktopWorkspace workspace_;
    X11::WindowServer windowServer_;
    AutostartEntry loginItems_;
    PreferencesFile preferences_;
    JournalLog log_;
    std::string home_;
    std::string applicationSupport_;
};

} // namespace pacelet::Linux
