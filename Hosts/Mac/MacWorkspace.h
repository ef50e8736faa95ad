#pragma once

#include "Core/Platform/Workspace.h"

namespace pacelet::Mac {

/// The desktop through AppKit's workspace.
class MacWorkspace final : public Workspace {
public:
    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override;
    bool isRunning(const std::string& bundleIdentifier) override;
    bool openURL(const std::string& url) override;
    std::optional<std::string> applicationPath(const std::string& bundleIdentifier) override;
    void openApplication(const std::string& path) override;
    std::optional<EncodedImage> icon(const std::string& path, int size) override;
    ObserverHandle observeSleep(std::function<void()> willSleep,
                                std::function<void()> didWake) override;

    /// Whether the user has asked for little motion.
    static bool prefersReducedMotion();
};

} // namespace pacelet::Mac
