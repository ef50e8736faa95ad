#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pacelet::Script {

/// What a script reads of a window.
struct Window {
    std::int64_t id = 0;
    std::string_view mode;           ///< "normal" or "incognito"
    std::int64_t activeTabIndex = 1; ///< counted from 1
    std::size_t tabs = 0;
};

/// What a script reads of a tab. The views hold until the application is changed.
struct Tab {
    std::int64_t id = 0;
    std::string_view title;
    std::string_view url;
};

/// A browser as a script sees it: windows in the browser's own order, their tabs in theirs. What is
/// read stays as it is but for the changes that are made here. Everything may throw `ScriptError`.
class Application {
public:
    virtual ~Application() = default;

    virtual std::string name() = 0;

    virtual std::size_t windowCount() = 0;
    virtual Window window(std::size_t index) = 0;
    virtual std::string windowName(std::size_t index) = 0;
    virtual Tab tab(std::size_t window, std::size_t index) = 0;
    /// Index of the window in front; there is at least one.
    virtual std::size_t frontWindow() = 0;

    // Of windows and tabs that are there by what was read.
    virtual void closeTab(std::int64_t window, std::int64_t tab) = 0;
    virtual void closeWindow(std::int64_t window) = 0;
    /// Opens the address behind the window's other tabs; answers the new tab's id.
    virtual std::int64_t openTab(std::int64_t window, const std::string& url) = 0;
    virtual std::int64_t openWindow() = 0;
    virtual void activate() = 0;
};

/// The machine that a script runs on.
class System {
public:
    virtual ~System() = default;

    /// The script has been read and is about to run.
    virtual void begin() {}

    /// The application with this bundle identifier, which lives as long as the script runs. Throws
    /// `ScriptError` when there is none, it does not run, or it must not be controlled.
    virtual Application& application(const std::string& bundleIdentifier) = 0;

    /// Sends an event, such as "event aevtrrst", to an application by its name.
    virtual void sendEvent(const std::string& application, const std::string& code) = 0;

    /// What the command prints.
    virtual std::string runCommand(const std::string& command, bool asAdministrator) = 0;
};

} // namespace pacelet::Script
