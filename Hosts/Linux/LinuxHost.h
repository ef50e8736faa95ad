#pragma once

#include "Core/Platform/Platform.h"
#include "Hosts/Linux/Background/DesktopItems.h"
#include "Hosts/Linux/Browser/ExtensionRegistry.h"
#include "Hosts/Linux/Desktop/DesktopWorkspace.h"
#include "Hosts/Linux/JournalLog.h"
#include "Hosts/Linux/Knowledge/LocalKnowledge.h"
#include "Hosts/Linux/LinuxKernel.h"
#include "Hosts/Linux/LinuxSettings.h"
#include "Hosts/Linux/LinuxToolRunner.h"
#include "Hosts/Linux/Network/LinuxNetworkLink.h"
#include "Hosts/Linux/PSTool.h"
#include "Hosts/Linux/Speed/NetworkQualityTool.h"
#include "Hosts/Linux/SystemClock.h"
#include "Hosts/Linux/Systemd/SessionRestart.h"
#include "Hosts/Linux/User/AutostartEntry.h"
#include "Hosts/Linux/User/PreferencesFile.h"
#include "Hosts/Linux/X11/XWindowServer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace pacelet::Linux {

/// This machine, live. Owns the services that Core asks; the references live as long as it does.
class LinuxHost {
public:
    static constexpr OperatingSystem system = OperatingSystem::linuxDesktop;

    explicit LinuxHost(const LinuxSettings& settings = {});

    Clock& clock() { return clock_; }
    ToolRunner& tools() { return tools_; }
    Kernel& kernel() { return kernel_; }
    pacelet::NetworkLink& networkLink() { return networkLink_; }
    ProgramKnowledge& knowledge() { return knowledge_; }

    /// Why a process of the last listing belongs to an application, or to none; nothing when it has
    /// gone.
    std::optional<std::string_view> whyThere(std::int32_t pid, const std::string& path);

    /// All of it. "/" is the root, below which this machine has neither "Applications" nor
    /// "Library"; the folder of application data is that of XDG_DATA_HOME.
    Platform platform();

    /// Ends what would go on for long: to be called when the program ends. Any thread.
    void stopLongTools() {
        networkQuality_.stop();
        restart_.stop();
    }

private:
    void answerTools(const LinuxSettings& settings);
    std::unordered_map<std::int32_t, std::string> applicationNames();

    SystemClock clock_;
    LinuxKernel kernel_;
    PSTool ps_;
    LocalKnowledge knowledge_;
    NetworkQualityTool networkQuality_;
    SessionRestart restart_;
    LinuxToolRunner tools_;
    LinuxNetworkLink networkLink_;
    ExtensionRegistry browsers_;
    DesktopWorkspace workspace_;
    DesktopItems backgroundItems_;
    X11::XWindowServer windowServer_;
    AutostartEntry loginItems_;
    JournalLog log_;
    PreferencesFile preferences_;
    std::string home_;
    std::string applicationSupport_;
    HostAbilities abilities_;
};

} // namespace pacelet::Linux
