#pragma once

#include "Core/Platform/Workspace.h"
#include "Hosts/Linux/Desktop/AppInstances.h"
#include "Hosts/Linux/Desktop/ProcessHandle.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// Asks the windows of these processes to close; false when there was none to ask.
using WindowCloser = std::function<bool(const std::vector<std::int32_t>& pids)>;

/// One running copy of an application, held by its leading processes.
class RunningCopy final : public RunningApplication {
public:
    RunningCopy(AppInstance instance, std::shared_ptr<const FolderReader> proc,
                WindowCloser closeWindows);

    std::optional<std::string> bundlePath() const override { return instance_.bundlePath; }
    std::optional<std::string> bundleIdentifier() const override {
        return instance_.bundleIdentifier;
    }
    std::optional<std::string> executablePath() const override { return instance_.executablePath; }

    /// Only what a menu shows becomes an application at all.
    ActivationPolicy activationPolicy() const override { return ActivationPolicy::regular; }

    bool isTerminated() const override;

    /// Closes its windows, as a click on their close buttons would; without windows it gets the
    /// customary signal.
    bool terminate() override;

    /// Ends all its processes, leaders first.
    bool forceTerminate() override;

private:
    AppInstance instance_;
    std::shared_ptr<const FolderReader> proc_;
    WindowCloser closeWindows_;
    std::vector<ProcessHandle> leaders_;
};

} // namespace pacelet::Linux
