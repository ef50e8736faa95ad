#include "Core/Browser/BrowserController.h"

#include "Core/Browser/BrowserError.h"
#include "Core/Browser/OSAScriptRunner.h"
#include "Core/Browser/TabListing.h"
#include "Core/Browser/TabScript.h"

namespace pacelet {

BrowserController::BrowserController(const Platform& platform)
    : BrowserController{std::make_shared<OSAScriptRunner>(platform.tools),
                        [&workspace = platform.workspace](const std::string& bundleIdentifier) {
                            return workspace.isRunning(bundleIdentifier);
                        }} {}

std::vector<BrowserWindow> BrowserController::windows(ChromiumBrowser browser) const {
    requireRunning(browser);
    return TabScript::parse(runner_->run(TabScript::list(browser)), appName(browser));
}

void BrowserController::close(const std::vector<BrowserTab>& tabs, ChromiumBrowser browser) const {
    if (tabs.empty()) {
        return;
    }
    requireRunning(browser);
    runner_->run(TabScript::close(tabs, browser));
}

void BrowserController::merge(const MergePlan& plan, ChromiumBrowser browser) const {
    requireRunning(browser);
    runner_->run(TabScript::merge(plan, browser));
}

void BrowserController::openMemorySaver(ChromiumBrowser browser) const {
    requireRunning(browser);
    runner_->run(TabScript::openMemorySaver(browser));
}

void BrowserController::requireRunning(ChromiumBrowser browser) const {
    if (!isRunning_(std::string{rawValue(browser)})) {
        throw BrowserError::notRunning();
    }
}

} // namespace pacelet
