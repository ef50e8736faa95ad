#pragma once

#include "Core/Browser/ChromiumBrowser.h"
#include "Core/Browser/ScriptRunner.h"
#include "Core/Browser/TabCleanup.h"
#include "Core/Platform/Platform.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace pacelet {

/// The only door to a running browser. Each operation blocks until the script has ended, so it is
/// for a background thread; any number may run at a time. No browser is ever started: one that does
/// not run makes every operation throw `BrowserError::notRunning`. Errors of the script runner are
/// passed on as they are, and nothing is tried again or taken back.
class BrowserController {
public:
    /// Whether an application with this bundle identifier runs. Called from any thread.
    using RunningCheck = std::function<bool(const std::string& bundleIdentifier)>;

    /// Drives the browsers of this machine.
    explicit BrowserController(const Platform& platform);

    BrowserController(std::shared_ptr<ScriptRunner> runner, RunningCheck isRunning)
        : runner_{std::move(runner)},
          isRunning_{std::move(isRunning)} {}

    /// All windows with their tabs, in the browser's own order.
    std::vector<BrowserWindow> windows(ChromiumBrowser browser) const;

    /// Closes the tabs. Without any, nothing is asked and nothing can fail.
    void close(const std::vector<BrowserTab>& tabs, ChromiumBrowser browser) const;

    void merge(const MergePlan& plan, ChromiumBrowser browser) const;

    /// Opens the browser's page of memory settings.
    void openMemorySaver(ChromiumBrowser browser) const;

private:
    void requireRunning(ChromiumBrowser browser) const;

    std::shared_ptr<ScriptRunner> runner_;
    RunningCheck isRunning_;
};

} // namespace pacelet
