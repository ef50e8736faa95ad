#include "Hosts/Simulated/Tools/OSAScript.h"

#include "Hosts/Script/Interpreter.h"
#include "Hosts/Script/ScriptError.h"

#include <memory>
#include <utility>
#include <vector>

namespace pacelet::Simulated::OSAScript {

namespace {

using Script::ScriptError;

constexpr std::string_view rebuildCommand = "/usr/bin/mdutil -E /";
constexpr std::string_view restartEvent = "event aevtrrst";
constexpr std::int32_t commandNotFound = 127;

/// How long a new index keeps Spotlight busy, and how much.
constexpr Seconds rebuildTime{40.0 * 60};
constexpr double rebuildLoad = 70;

/// Starts the index anew: whatever was stuck is at work again and will be done.
void rebuildIndex(World& world) {
    ++world.records.indexRebuilds;
    for (const std::string_view name : {"mds_stores", "mds", "corespotlightd"}) {
        if (Process* const process = world.processes.find(name)) {
            process->setLoad({.percent = name == "mds_stores" ? rebuildLoad : 8,
                              .swing = 0.3,
                              .until = world.time.awake + rebuildTime,
                              .percentAfter = 0.5},
                             world.time.awake);
        }
    }
}

/// A simulated browser as a script sees it.
class ScriptedBrowser final : public Script::Application {
public:
    explicit ScriptedBrowser(Browser& browser)
        : browser_{browser} {}

    std::string name() override { return browser_.name; }
    std::size_t windowCount() override { return browser_.windows.size(); }
    Script::Window window(std::size_t index) override {
        const TabWindow& window = browser_.windows.at(index);
        return {window.id, window.incognito ? "incognito" : "normal",
                static_cast<std::int64_t>(window.activeTab) + 1, window.tabs.size()};
    }
    std::string windowName(std::size_t index) override {
        return browser_.windowName(browser_.windows.at(index));
    }
    Script::Tab tab(std::size_t window, std::size_t index) override {
        const Tab& tab = browser_.windows.at(window).tabs.at(index);
        return {tab.id, tab.title, tab.url};
    }
    std::size_t frontWindow() override { return 0; }

    void closeTab(std::int64_t window, std::int64_t tab) override {
        browser_.closeTab(window, tab);
    }
    void closeWindow(std::int64_t window) override { browser_.closeWindow(window); }
    std::int64_t openTab(std::int64_t window, const std::string& url) override {
        return browser_.openTab(*browser_.window(window), url).id;
    }
    std::int64_t openWindow() override { return browser_.openWindow().id; }
    void activate() override {}

private:
    Browser& browser_;
};

class ScriptedMac final : public Script::System {
public:
    ScriptedMac(World& world, std::size_t scriptLength)
        : world_{world},
          scriptLength_{scriptLength} {}

    void begin() override {
        const auto any = [](const auto&) { return true; };
        if (const auto* failure = world_.failures.find<ScriptFails>(any)) {
            throw ScriptError{failure->number, failure->message, {0, scriptLength_}};
        }
    }

    Script::Application& application(const std::string& identifier) override {
        const InstalledApp* const app = findInstalled(world_, identifier);
        if (app == nullptr) {
            throw ScriptError{Script::noSuchObject,
                              "Can’t get application id \"" + identifier + "\"."};
        }
        const auto browser = world_.browsers.find(identifier);
        if (browser == world_.browsers.end()) {
            throw ScriptError{Script::notRunning,
                              app->name + " got an error: Application isn’t running."};
        }
        const auto refused = [&](const AutomationRefused& failure) {
            return failure.bundleIdentifier.empty() || failure.bundleIdentifier == identifier;
        };
        if (world_.failures.find<AutomationRefused>(refused) != nullptr) {
            throw ScriptError{Script::notAuthorized,
                              "Not authorized to send Apple events to " + app->name + "."};
        }
        browsers_.push_back(std::make_unique<ScriptedBrowser>(browser->second));
        return *browsers_.back();
    }

    void sendEvent(const std::string& application, const std::string& code) override {
        if (application != "loginwindow" || code != restartEvent) {
            throw ScriptError{Script::notUnderstood, application +
                                                         " got an error: doesn’t understand the “" +
                                                         code + "” message."};
        }
        refuseIfCancelled();
        ++world_.records.restartRequests;
    }

    std::string runCommand(const std::string& command, bool asAdministrator) override {
        if (asAdministrator) {
            refuseIfCancelled();
        }
        if (command != rebuildCommand) {
            const std::string program = command.substr(0, command.find(' '));
            throw ScriptError{commandNotFound, "sh: " + program + ": command not found"};
        }
        if (!asAdministrator) {
            throw ScriptError{1, "Error: unable to perform operation."};
        }
        rebuildIndex(world_);
        return "/:\n\tIndexing enabled. ";
    }

private:
    void refuseIfCancelled() const {
        if (world_.failures.has<PromptCancelled>()) {
            throw ScriptError{Script::userCancelled, "User canceled."};
        }
    }

    World& world_;
    std::size_t scriptLength_;
    std::vector<std::unique_ptr<ScriptedBrowser>> browsers_;
};

} // namespace

Shell::Output run(World& world, std::string_view script) {
    ScriptedMac mac{world, script.size()};
    Shell::Output output = Script::run(mac, script);
    // Also what a script did before it failed shows in the processes.
    for (const auto& browser : world.browsers) {
        settle(world, browser.first);
    }
    return output;
}

} // namespace pacelet::Simulated::OSAScript
