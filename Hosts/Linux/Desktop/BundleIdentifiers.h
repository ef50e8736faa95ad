#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// Applications that the program knows by another identifier than that of their menu entry.
struct KnownIdentifier {
    std::string_view desktopID;
    std::string_view bundleIdentifier;
};
inline constexpr auto knownIdentifiers = std::to_array<KnownIdentifier>({
    {"google-chrome", "com.google.Chrome"},
    {"brave-browser", "com.brave.Browser"},
    {"brave_brave", "com.brave.Browser"},
    {"microsoft-edge", "com.microsoft.edgemac"},
    {"com.microsoft.Edge", "com.microsoft.edgemac"},
    {"chromium", "org.chromium.Chromium"},
    {"chromium-browser", "org.chromium.Chromium"},
    {"chromium_chromium", "org.chromium.Chromium"},
    {"vivaldi-stable", "com.vivaldi.Vivaldi"},
    {"opera", "com.operasoftware.Opera"},
    {"opera_opera", "com.operasoftware.Opera"},
    {"com.opera.Opera", "com.operasoftware.Opera"},
});

/// The bundle identifier of the application with this desktop id; mostly that id itself.
inline std::string bundleIdentifier(std::string_view desktopID) {
    const auto known =
        std::find_if(knownIdentifiers.begin(), knownIdentifiers.end(),
                     [&](const KnownIdentifier& row) { return row.desktopID == desktopID; });
    return std::string{known == knownIdentifiers.end() ? desktopID : known->bundleIdentifier};
}

} // namespace pacelet::Linux
