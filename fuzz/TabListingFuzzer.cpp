#include "Core/Browser/TabListing.h"
#include "Core/Browser/TabScript.h"
#include "Core/Support/Precondition.h"

#include <cstddef>
#include <cstdint>

using namespace pacelet;

/// Reads any listing, and carries what came of it through every decision and script.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const auto windows = TabScript::parse(text, "Google Chrome");
    std::size_t bytes = 0;
    for (const BrowserWindow& window : windows) {
        std::size_t active = 0;
        for (const BrowserTab& tab : window.tabs) {
            precondition(tab.windowID == window.id, "a tab stands in another window");
            bytes += tab.title.size() + tab.url.size();
            active += tab.isActive ? 1 : 0;
        }
        precondition(active <= 1, "a window has two active tabs");
        TabScript::close(window.tabs, ChromiumBrowser::chrome);
    }
    precondition(bytes <= size, "tabs hold more text than was told");
    for (const BrowserTab& tab : TabCleanup::duplicates(windows)) {
        precondition(tab.host().size() <= tab.url.size(), "a host is longer than its address");
    }
    if (const auto plan = TabCleanup::mergePlan(windows)) {
        precondition(plan->windowsToClose.size() < windows.size(), "a merge leaves no window");
        TabScript::merge(*plan, ChromiumBrowser::chrome);
    }
    return 0;
}
