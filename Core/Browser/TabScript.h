#pragma once

#include "Core/Browser/BrowserTab.h"
#include "Core/Browser/ChromiumBrowser.h"
#include "Core/Browser/TabCleanup.h"

#include <string>
#include <string_view>
#include <vector>

/// The text protocol with a running browser: AppleScript sources to it, and the listing back.
///
/// The listing is a run of records, each of five fields and ended by a record separator (code 30),
/// with a unit separator (code 31) between the fields:
///
///     "W", window id, mode, index of the active tab from 1, window name
///     "T", id of the tab's window, tab id, title, URL
///
/// A window's tabs follow it in their order. Lines of a script are joined by a line feed, and none
/// stands at its end.
namespace pacelet::TabScript {

/// Asks for the listing.
std::string list(ChromiumBrowser browser);

/// Closes the tabs, each addressed by its own id.
std::string close(const std::vector<BrowserTab>& tabs, ChromiumBrowser browser);

/// Opens all addresses of the plan in its target window, and only then closes the other windows.
std::string merge(const MergePlan& plan, ChromiumBrowser browser);

/// Opens the browser's page of memory settings.
std::string openMemorySaver(ChromiumBrowser browser);

/// `value` as an AppleScript value: ASCII digits bare unless `alwaysQuote` is set, everything else
/// as a string from which no character of it can escape.
std::string literal(std::string_view value, bool alwaysQuote);

/// The lines, indented, within a block that addresses the browser.
std::string wrap(const std::vector<std::string>& lines, ChromiumBrowser browser);

} // namespace pacelet::TabScript
