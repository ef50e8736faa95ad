#pragma once

#include "Hosts/Linux/Browser/BridgeServer.h"
#include "Hosts/Script/Application.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// One profile of a browser, and how its windows name it.
struct LinkedProfile {
    std::shared_ptr<BrowserLink> link;
    std::optional<std::string> name;
};

/// A running browser, reached over the links of its profiles. Its windows are read when the first
/// of them is asked for. Ids of windows hold the number of the link, so that those of one
/// connection never mean anything on another.
class BridgedApplication final : public Script::Application {
public:
    /// `isRunning` tells whether the browser is there still. `profiles` holds at least one.
    BridgedApplication(std::string name, std::vector<LinkedProfile> profiles,
                       std::function<bool()> isRunning)
        : name_{std::move(name)},
          profiles_{std::move(profiles)},
          isRunning_{std::move(isRunning)} {}

    std::string name() override { return name_; }
    std::size_t windowCount() override { return windows().size(); }
    Script::Window window(std::size_t index) override;
    std::string windowName(std::size_t index) override;
    Script::Tab tab(std::size_t window, std::size_t index) override;
    std::size_t frontWindow() override;

    void closeTab(std::int64_t window, std::int64_t tab) override;
    void closeWindow(std::int64_t window) override;
    std::int64_t openTab(std::int64_t window, const std::string& url) override;
    std::int64_t openWindow() override;
    void activate() override;

private:
    struct SeenWindow {
        std::int64_t id = 0;
        std::size_t profile = 0;
        BridgeMessages::Window content;
    };

    /// Where something is in its browser.
    struct Place {
        BrowserLink& link;
        std::int64_t window = 0;
    };

    std::vector<SeenWindow>& windows();
    Place placeOf(std::int64_t window) const;
    BridgeMessages::Reply ask(BrowserLink& link, const BridgeMessages::Request& request) const;

    std::string name_;
    std::vector<LinkedProfile> profiles_;
    std::function<bool()> isRunning_;
    std::optional<std::vector<SeenWindow>> windows_;
    std::int64_t openedWindow_ = 0; ///< that of `openedTab_`
    std::optional<std::int64_t> openedTab_;
};

} // namespace pacelet::Linux
