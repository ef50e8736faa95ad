#include "Hosts/Linux/Browser/OSAScriptTool.h"

#include "Hosts/Linux/Browser/BridgedBrowsers.h"
#include "Hosts/Script/Interpreter.h"
#include "Hosts/Script/ScriptError.h"

#include <fmt/format.h>
#include <memory>

namespace pacelet::Linux::OSAScriptTool {

namespace {

using Script::ScriptError;

class BridgedSystem final : public Script::System {
public:
    BridgedSystem(BrowserConnections& browsers, const SessionRestart& restart)
        : browsers_{browsers},
          restart_{restart} {}

    Script::Application& application(const std::string& identifier) override {
        const BridgedBrowser* const browser = bridgedBrowser(identifier);
        if (browser == nullptr) {
            throw ScriptError{Script::noSuchObject,
                              fmt::format("Can’t get application id \"{}\".", identifier)};
        }
        const std::string name{browser->name};
        if (!browsers_.isRunning(identifier)) {
            throw ScriptError{Script::notRunning,
                              name + " got an error: Application isn’t running."};
        }
        auto profiles = browsers_.profiles(identifier);
        if (profiles.empty()) {
            throw ScriptError{Script::notAuthorized,
                              "Not authorized to send Apple events to " + name + "."};
        }
        const auto isRunning = [this, identifier] { return browsers_.isRunning(identifier); };
        applications_.push_back(
            std::make_unique<BridgedApplication>(name, std::move(profiles), isRunning));
        return *applications_.back();
    }

    void sendEvent(const std::string& application, const std::string& code) override {
        if (application == "loginwindow" && code == "aevtrrst") {
            return restart();
        }
        throw ScriptError{Script::notUnderstood,
                          fmt::format("{} got an error: doesn’t understand the “{}” message.",
                                      application, code)};
    }

    std::string runCommand(const std::string& command, bool) override {
        throw ScriptError{Script::notUnderstood, fmt::format("Can’t run “{}” here.", command)};
    }

private:
    void restart() {
        switch (restart_.run()) {
        case RestartEnd::begun:
            return;
        case RestartEnd::cancelled:
            throw ScriptError{Script::userCancelled, "User canceled."};
        case RestartEnd::forbidden:
            throw ScriptError{Script::notAuthorized, "Not authorized to restart this machine."};
        case RestartEnd::impossible:
            throw ScriptError{Script::noSuchObject, "Nobody restarts this machine."};
        }
    }

    BrowserConnections& browsers_;
    const SessionRestart& restart_;
    std::vector<std::unique_ptr<BridgedApplication>> applications_;
};

} // namespace

Shell::Output run(const std::vector<std::string>& arguments, BrowserConnections& browsers,
                  const SessionRestart& restart) {
    constexpr std::int32_t statusUsage = 64;
    if (arguments.size() != 2 || arguments.front() != "-e") {
        return {statusUsage, {}, "usage: osascript -e SCRIPT\n"};
    }
    BridgedSystem system{browsers, restart};
    return Script::run(system, arguments.back());
}

} // namespace pacelet::Linux::OSAScriptTool
