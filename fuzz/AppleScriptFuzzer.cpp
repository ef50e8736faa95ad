#include "Hosts/Simulated/Tools/OSAScript.h"

#include <cstdint>
#include <string_view>

using namespace pacelet::Simulated;

namespace {

World browsing() {
    World world;
    const InstalledApp chrome{"Google Chrome", "com.google.Chrome",
                              "/Applications/Google Chrome.app"};
    world.installed.push_back(chrome);
    launch(world, chrome);
    Browser browser;
    browser.bundleIdentifier = chrome.bundleIdentifier;
    browser.name = chrome.name;
    browser.windows = {{10, false, "", 0, {{11, "One", "https://a.example/"}}},
                       {20, true, "", 0, {{21, "Two", "https://b.example/"}}}};
    world.browsers.emplace(chrome.bundleIdentifier, std::move(browser));
    return world;
}

} // namespace

/// A script either works or says why not.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    World world = browsing();
    const std::string_view script{reinterpret_cast<const char*>(data), size};
    const auto output = OSAScript::run(world, script);
    if (output.status == 0 ? !output.stderr.empty() : !output.stdout.empty()) {
        __builtin_trap();
    }
    return 0;
}
