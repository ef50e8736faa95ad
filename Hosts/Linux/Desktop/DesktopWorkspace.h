#pragma once

#include "Core/Platform/Workspace.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"
#include "Hosts/Linux/Desktop/IconFinder.h"
#include "Hosts/Linux/Desktop/RunningCopy.h"
#include "Hosts/Linux/PSTool.h"
#include "Hosts/Linux/Systemd/PostToUI.h"
#include "Hosts/Linux/Systemd/SessionRestart.h"

#include <memory>
#include <mutex>
#include <string>

namespace pacelet::Linux {

/// The Linux desktop in the shape of the Mac's: its applications are those that the process listing
/// shows as bundles, under the same paths.
class DesktopWorkspace final : public Workspace {
public:
    struct Settings {
        std::string procFolder;
        DesktopPlaces places;
        IconPlaces icons;
        WindowCloser closeWindows;
        PostToUI postToUI; ///< without it sleep and wake are not told
    };

    /// `processes` must outlive it.
    DesktopWorkspace(Settings settings, PSTool& processes);

    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override;
    bool isRunning(const std::string& bundleIdentifier) override;
    bool openURL(const std::string& url) override;
    std::optional<std::string> applicationPath(const std::string& bundleIdentifier) override;
    void openApplication(const std::string& path) override;
    bool asksBeforeRestart() override { return SessionRestart::asksFirst(); }
    std::optional<EncodedImage> icon(const std::string& path, int size) override;
    ObserverHandle observeSleep(std::function<void()> willSleep,
                                std::function<void()> didWake) override;

    /// The applications of the menu as of now. Any thread.
    std::shared_ptr<const DesktopIndex> index();

private:
    std::optional<DesktopEntry> entryOf(const std::string& bundle);
    bool startFirst(const std::vector<std::vector<std::string>>& commands) const;

    Settings settings_;
    PSTool& processes_;
    std::shared_ptr<const FolderReader> proc_;
    std::mutex catalogMutex_;
    DesktopCatalog catalog_;
};

} // namespace pacelet::Linux
