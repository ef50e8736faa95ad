#pragma once

#include "Core/Support/EnumTable.h"

#include <array>
#include <optional>
#include <string_view>

namespace pacelet {

/// The browsers whose tabs the program can clean up.
enum class ChromiumBrowser { chrome, brave, edge, chromium, vivaldi, opera };

struct ChromiumBrowserRow {
    ChromiumBrowser value;
    std::string_view rawValue;       ///< bundle identifier; also the browser's id in lists
    std::string_view appName;        ///< as it shows itself to the user
    std::string_view memorySaverURL; ///< its page of memory settings
    std::string_view bundleFileName;
};

inline constexpr std::array<ChromiumBrowserRow, 6> chromiumBrowsers{{
    {ChromiumBrowser::chrome, "com.google.Chrome", "Google Chrome", "chrome://settings/performance",
     "Google Chrome.app"},
    {ChromiumBrowser::brave, "com.brave.Browser", "Brave Browser", "chrome://settings/performance",
     "Brave Browser.app"},
    {ChromiumBrowser::edge, "com.microsoft.edgemac", "Microsoft Edge",
     "edge://settings/system/managePerformance", "Microsoft Edge.app"},
    {ChromiumBrowser::chromium, "org.chromium.Chromium", "Chromium",
     "chrome://settings/performance", "Chromium.app"},
    {ChromiumBrowser::vivaldi, "com.vivaldi.Vivaldi", "Vivaldi", "vivaldi://settings/tabs/",
     "Vivaldi.app"},
    {ChromiumBrowser::opera, "com.operasoftware.Opera", "Opera", "opera://settings/system",
     "Opera.app"},
}};

constexpr std::string_view rawValue(ChromiumBrowser browser) {
    return rowOf(chromiumBrowsers, browser).rawValue;
}

constexpr std::string_view appName(ChromiumBrowser browser) {
    return rowOf(chromiumBrowsers, browser).appName;
}

constexpr std::string_view memorySaverURL(ChromiumBrowser browser) {
    return rowOf(chromiumBrowsers, browser).memorySaverURL;
}

/// The browser whose bundle stands at `appPath`, in whatever folder; a bundle under another file
/// name is none.
constexpr std::optional<ChromiumBrowser> chromiumBrowserAt(std::string_view appPath) {
    for (const ChromiumBrowserRow& row : chromiumBrowsers) {
        if (appPath.ends_with(row.bundleFileName) &&
            appPath.substr(0, appPath.size() - row.bundleFileName.size()).ends_with('/')) {
            return row.value;
        }
    }
    return std::nullopt;
}

} // namespace pacelet
