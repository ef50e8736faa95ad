#include "Hosts/Linux/Browser/ExtensionRegistry.h"

#include "Core/Support/Files.h"
#include "Core/Support/JsonWriter.h"
#include "Hosts/Linux/Browser/BridgedBrowsers.h"
#include "Hosts/Linux/User/AtomicFile.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <utility>

namespace pacelet::Linux {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostManifestBytes = 1 << 16;

/// Where Debian's browser takes extensions of the system from.
constexpr std::string_view systemExtension = "usr/share/chromium/extensions/pacelet/manifest.json";
constexpr std::string_view browserThatTakesIt = "org.chromium.Chromium";

bool exists(const std::string& path) {
    std::error_code error;
    return fs::exists(path, error);
}

std::string hostFile(std::string_view folder) {
    return fmt::format("{}/{}.json", folder, bridgeName);
}

std::string userHostFile(const std::string& userData) {
    return hostFile(joinedPath(userData, "NativeMessagingHosts"));
}

} // namespace

ExtensionRegistry::ExtensionRegistry(Settings settings, BrowserConnections::Settings browsers)
    : settings_{std::move(settings)},
      connections_{std::move(browsers), teller(settings_.postToUI, observers_)} {}

std::function<void()> ExtensionRegistry::teller(PostToUI postToUI,
                                                std::weak_ptr<Observers> observers) {
    if (!postToUI) {
        return {};
    }
    return [postToUI = std::move(postToUI), observers = std::move(observers)] {
        postToUI([observers] {
            const auto all = observers.lock();
            if (!all) {
                return;
            }
            // Whoever is told may register, or go.
            for (const auto& observer : Observers{*all}) {
                if (const auto there = observer.lock()) {
                    (*there)();
                }
            }
        });
    };
}

ExtensionSetup ExtensionRegistry::setup(const std::string& identifier) {
    const BridgedBrowser* const browser = bridgedBrowser(identifier);
    if (browser == nullptr) {
        return ExtensionSetup::unknown;
    }
    const bool isSystems =
        exists(joinedPath(settings_.systemRoot, hostFile(browser->systemHosts.substr(1))));
    if (isSystems && identifier == browserThatTakesIt &&
        exists(joinedPath(settings_.systemRoot, systemExtension))) {
        return ExtensionSetup::provided;
    }
    const auto folders = connections_.userDataFolders(identifier);
    const bool isUsers =
        std::all_of(folders.begin(), folders.end(), [this](const std::string& folder) {
            std::string text;
            return !readFile(userHostFile(folder), mostManifestBytes, text) && text == manifest();
        });
    return isSystems || isUsers ? ExtensionSetup::registered : ExtensionSetup::unknown;
}

bool ExtensionRegistry::registerProgram(const std::string& identifier) {
    if (bridgedBrowser(identifier) == nullptr) {
        return false;
    }
    bool isWritten = true;
    for (const std::string& folder : connections_.userDataFolders(identifier)) {
        isWritten = !replaceFile(userHostFile(folder), manifest(), Outlives::crash) && isWritten;
    }
    return isWritten;
}

std::string ExtensionRegistry::manifest() const {
    JsonWriter json;
    json.beginObject().key("name").value(bridgeName);
    json.key("description").value("Connects Pacelet's extension with Pacelet");
    json.key("path").value(settings_.bridgeProgram);
    json.key("type").value("stdio");
    json.key("allowed_origins").beginArray();
    json.value(fmt::format("chrome-extension://{}/", extensionID)).endArray().endObject();
    return json.take() + '\n';
}

ObserverHandle ExtensionRegistry::observe(std::function<void()> changed) {
    std::erase_if(*observers_, [](const auto& observer) { return observer.expired(); });
    auto handle = std::make_shared<std::function<void()>>(std::move(changed));
    observers_->push_back(handle);
    return handle;
}

} // namespace pacelet::Linux
