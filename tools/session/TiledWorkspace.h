#pragma once

#include "Core/Platform/Workspace.h"
#include "Core/Support/Text.h"
#include "Hosts/Simulated/Services/AppIcon.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace pacelet {

/// A captured desktop, whose applications get the same plain icons as those of a simulated Mac: a
/// capture holds none.
class TiledWorkspace final : public Workspace {
public:
    /// `captured` outlives this.
    explicit TiledWorkspace(Workspace& captured)
        : captured_{captured} {}

    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override {
        return captured_.runningApplications();
    }
    bool isRunning(const std::string& bundleIdentifier) override {
        return captured_.isRunning(bundleIdentifier);
    }
    bool openURL(const std::string& url) override { return captured_.openURL(url); }
    std::optional<std::string> applicationPath(const std::string& bundleIdentifier) override {
        return captured_.applicationPath(bundleIdentifier);
    }
    void openApplication(const std::string& path) override { captured_.openApplication(path); }
    std::optional<EncodedImage> icon(const std::string& path, int size) override {
        const std::string_view name = lastPathComponent(path);
        return name.ends_with(".app")
                   ? std::optional{Simulated::AppIcon::tile(withoutExtension(name), size)}
                   : std::nullopt;
    }
    ObserverHandle observeSleep(std::function<void()> willSleep,
                                std::function<void()> didWake) override {
        return captured_.observeSleep(std::move(willSleep), std::move(didWake));
    }

private:
    Workspace& captured_;
};

} // namespace pacelet
