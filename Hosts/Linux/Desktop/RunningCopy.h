#pragma once

#include "Core/Platform/Workspace.h"
#include "Hosts/Linux/Desktop/AppInstances.h"
#include "Hosts/Linux/Desktop/ProcessHandle.h"
#include "Hosts/Linux/Desktop/QuitOverBus.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// Asks the windows of these processes to close; false when there was none to ask.
using WindowCloser = std::function<bool(const std::vector<std::int32_t>& pids)>;

/// The ways to ask an application that are not its windows' close buttons.
struct AskingWays {
    WindowCloser hasWindows; ///< whether there are windows to close; asks none of them
    /// Asks it over the session bus, or looks whether it can be; false when it has no way to.
    std::function<bool(const AppInstance&, const std::vector<std::int32_t>& pids, Asking)> overBus;
};

/// One running copy of an application, held by its leading processes.
class RunningCopy final : public RunningApplication {
public:
    RunningCopy(AppInstance instance, std::shared_ptr<const FolderReader> proc,
                WindowCloser closeWindows, AskingWays ways = {});

    std::optional<std::string> bundlePath() const override { return instance_.bundlePath; }
    std::optional<std::string> bundleIdentifier() const override {
        return instance_.bundleIdentifier;
    }
    std::optional<std::string> executablePath() const override { return instance_.executablePath; }

    /// Only what a menu shows becomes an application at all.
    ActivationPolicy activationPolicy() const override { return ActivationPolicy::regular; }

    bool isTerminated() const override;
    bool canBeAsked() const override;

    /// Closes its windows, as a click on their close buttons would. Where no window can be asked,
    /// it gets its own request to quit over the bus, else the customary signal.
    bool terminate() override;

    /// Ends all its processes, leaders first.
    bool forceTerminate() override;

private:
    std::vector<std::int32_t> livingProcesses() const;

    AppInstance instance_;
    std::shared_ptr<const FolderReader> proc_;
    WindowCloser closeWindows_;
    AskingWays ways_;
    std::vector<ProcessHandle> leaders_;
};

} // namespace pacelet::Linux
