#pragma once

#include "Hosts/Linux/Browser/BridgeServer.h"
#include "Hosts/Linux/Browser/BridgedApplication.h"
#include "Hosts/Linux/Proc/AppProcess.h"

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// Which of the browsers that run is connected, and with which profiles. Safe from any thread.
class BrowserConnections {
public:
    struct Settings {
        std::string runtimeFolder; ///< where bridges find us; empty when none is to
        std::string configFolder;  ///< the user's
        std::string procFolder;
        /// Processes of the user's applications.
        std::function<std::vector<AppProcess>()> processes;
    };

    /// `changed` is called on a thread of its own after a browser came or went.
    BrowserConnections(Settings settings, std::function<void()> changed);

    bool isRunning(const std::string& bundleIdentifier) const;

    /// The profiles that are connected; asks the browser which is which, and so may take a while.
    std::vector<LinkedProfile> profiles(const std::string& bundleIdentifier);

    /// Folders in which copies of the browser keep their data: the standard one, and those of
    /// copies that run with another.
    std::vector<std::string> userDataFolders(const std::string& bundleIdentifier) const;

private:
    BridgeServer::Links linksOf(const std::string& bundleIdentifier) const;
    std::string userDataOf(std::int32_t pid, const std::string& bundleIdentifier) const;
    std::string standardUserData(const std::string& bundleIdentifier) const;
    std::string profileFolder(BrowserLink& link, const std::string& userData);

    Settings settings_;
    std::mutex mutex_;
    std::map<std::int64_t, std::string> profileFolders_; ///< by the number of the link
    std::optional<BridgeServer> server_;
};

} // namespace pacelet::Linux
