#pragma once

#include "Core/Platform/BrowserExtension.h"
#include "Hosts/Linux/Browser/BrowserConnections.h"
#include "Hosts/Linux/Systemd/PostToUI.h"

#include <list>
#include <memory>
#include <string>

namespace pacelet::Linux {

/// Tells browsers where our bridge stands, in the files that they read for it.
class ExtensionRegistry final : public BrowserExtension {
public:
    struct Settings {
        std::string systemRoot = "/"; ///< where "etc" and "usr" stand
        std::string bridgeProgram;    ///< path of the bridge
        std::string extensionFolder;
        PostToUI postToUI; ///< without it nobody is told of changes
    };

    ExtensionRegistry(Settings settings, BrowserConnections::Settings browsers);

    BrowserConnections& connections() { return connections_; }

    ExtensionSetup setup(const std::string& bundleIdentifier) override;
    bool registerProgram(const std::string& bundleIdentifier) override;
    std::string folder() override { return settings_.extensionFolder; }
    ObserverHandle observe(std::function<void()> changed) override;

private:
    /// On the UI thread, but for its being pointed to.
    using Observers = std::list<std::weak_ptr<std::function<void()>>>;

    static std::function<void()> teller(PostToUI postToUI, std::weak_ptr<Observers> observers);
    std::string manifest() const;

    Settings settings_;
    std::shared_ptr<Observers> observers_ = std::make_shared<Observers>();
    BrowserConnections connections_;
};

} // namespace pacelet::Linux
