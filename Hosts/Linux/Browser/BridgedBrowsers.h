#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace pacelet::Linux {

/// Our native messaging host, as browsers know it.
inline constexpr std::string_view bridgeName = "app.pacelet.browser";

/// Follows from the key in the extension's manifest.
inline constexpr std::string_view extensionID = "ceclgkiaafhiopppiicjhdcgcmpppcjb";

/// A browser that our extension works in.
struct BridgedBrowser {
    std::string_view bundleIdentifier;
    std::string_view name;         ///< as the program calls it; stands at the end of window names
    std::string_view configFolder; ///< below the user's folder of settings
    std::string_view systemHosts;  ///< where the system's native messaging hosts are told to it
};

inline constexpr auto bridgedBrowsers = std::to_array<BridgedBrowser>({
    {"com.google.Chrome", "Google Chrome", "google-chrome",
     "/etc/opt/chrome/native-messaging-hosts"},
    {"com.brave.Browser", "Brave Browser", "BraveSoftware/Brave-Browser",
     "/etc/chromium/native-messaging-hosts"},
    {"com.microsoft.edgemac", "Microsoft Edge", "microsoft-edge",
     "/etc/opt/edge/native-messaging-hosts"},
    {"org.chromium.Chromium", "Chromium", "chromium", "/etc/chromium/native-messaging-hosts"},
    {"com.vivaldi.Vivaldi", "Vivaldi", "vivaldi", "/etc/chromium/native-messaging-hosts"},
    {"com.operasoftware.Opera", "Opera", "opera", "/etc/opt/chrome/native-messaging-hosts"},
});

/// Null when the browser is none of them.
constexpr const BridgedBrowser* bridgedBrowser(std::string_view bundleIdentifier) {
    const auto found =
        std::find_if(bridgedBrowsers.begin(), bridgedBrowsers.end(),
                     [&](const auto& row) { return row.bundleIdentifier == bundleIdentifier; });
    return found == bridgedBrowsers.end() ? nullptr : &*found;
}

} // namespace pacelet::Linux
