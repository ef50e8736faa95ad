#include "Hosts/Linux/Browser/BrowserConnections.h"

#include "Core/Support/Files.h"
#include "Hosts/Linux/Browser/BridgedBrowsers.h"
#include "Hosts/Linux/Browser/BrowserProfiles.h"
#include "Hosts/Linux/Desktop/BundleIdentifiers.h"
#include "Hosts/Linux/Proc/FolderReader.h"

#include <algorithm>
#include <fmt/format.h>
#include <random>

namespace pacelet::Linux {

namespace {

constexpr std::size_t mostStateBytes = 1 << 26;

/// A browser that is well says at once which profile it is.
constexpr Seconds helloPatience{5};

/// Nobody else's, and never the same again.
std::string newToken() {
    std::random_device source;
    return fmt::format("{:08x}{:08x}{:08x}{:08x}", source(), source(), source(), source());
}

std::map<std::string, std::string> namesOf(const std::string& userData) {
    std::string text;
    readFile(joinedPath(userData, "Local State"), mostStateBytes, text);
    return BrowserProfiles::namesIn(text);
}

} // namespace

BrowserConnections::BrowserConnections(Settings settings, std::function<void()> changed)
    : settings_{std::move(settings)} {
    if (!settings_.runtimeFolder.empty()) {
        server_.emplace(settings_.runtimeFolder, std::move(changed));
    }
}

bool BrowserConnections::isRunning(const std::string& identifier) const {
    const auto processes = settings_.processes();
    // Helpers outlive a browser that has crashed for a moment.
    return std::any_of(processes.begin(), processes.end(), [&](const AppProcess& process) {
        return process.role == AppRole::main && bundleIdentifier(process.appID) == identifier;
    });
}

BridgeServer::Links BrowserConnections::linksOf(const std::string& identifier) const {
    BridgeServer::Links links = server_ ? server_->links() : BridgeServer::Links{};
    if (links.empty()) {
        return links;
    }
    const auto processes = settings_.processes();
    std::erase_if(links, [&](const auto& link) {
        return std::none_of(processes.begin(), processes.end(), [&](const AppProcess& process) {
            return process.identity.pid == link->browserPid() &&
                   bundleIdentifier(process.appID) == identifier;
        });
    });
    return links;
}

std::vector<LinkedProfile> BrowserConnections::profiles(const std::string& identifier) {
    std::vector<LinkedProfile> linked;
    std::vector<BrowserProfiles::Profile> known;
    for (auto& link : linksOf(identifier)) {
        const std::string userData = userDataOf(link->browserPid(), identifier);
        const auto names = namesOf(userData);
        BrowserProfiles::Profile& profile = known.emplace_back();
        profile.isOnly = names.size() < 2;
        const auto name =
            profile.isOnly ? names.begin() : names.find(profileFolder(*link, userData));
        if (name != names.end()) {
            profile.name = name->second;
        }
        linked.push_back({std::move(link), std::nullopt});
    }
    auto names = BrowserProfiles::shownNames(known);
    for (std::size_t index = 0; index < linked.size(); ++index) {
        linked[index].name = std::move(names[index]);
    }
    return linked;
}

std::string BrowserConnections::profileFolder(BrowserLink& link, const std::string& userData) {
    {
        const std::lock_guard lock{mutex_};
        const auto known = profileFolders_.find(link.number());
        if (known != profileFolders_.end()) {
            return known->second;
        }
    }
    const std::string token = newToken();
    try {
        link.ask({.ask = "hello", .token = token}, helloPatience);
    } catch (const LinkError&) {
        // What is asked next tells the failure.
        return {};
    }
    const std::string folder = BrowserProfiles::folderWith(userData, token).value_or("");
    const std::lock_guard lock{mutex_};
    return profileFolders_.emplace(link.number(), folder).first->second;
}

std::string BrowserConnections::standardUserData(const std::string& identifier) const {
    const BridgedBrowser* const browser = bridgedBrowser(identifier);
    return browser != nullptr ? joinedPath(settings_.configFolder, browser->configFolder)
                              : std::string{};
}

std::string BrowserConnections::userDataOf(std::int32_t pid, const std::string& identifier) const {
    ReadBuffer buffer;
    const auto commandLine =
        FolderReader{settings_.procFolder}.read(fmt::format("{}/cmdline", pid).c_str(), buffer);
    return BrowserProfiles::userDataFolder(commandLine.value_or(std::string_view{}),
                                           standardUserData(identifier));
}

std::vector<std::string> BrowserConnections::userDataFolders(const std::string& identifier) const {
    std::vector<std::string> folders{standardUserData(identifier)};
    for (const AppProcess& process : settings_.processes()) {
        if (process.role == AppRole::main && bundleIdentifier(process.appID) == identifier) {
            std::string folder = userDataOf(process.identity.pid, identifier);
            if (std::find(folders.begin(), folders.end(), folder) == folders.end()) {
                folders.push_back(std::move(folder));
            }
        }
    }
    return folders;
}

} // namespace pacelet::Linux
