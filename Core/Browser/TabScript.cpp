#include "Core/Browser/TabScript.h"

#include <algorithm>
#include <fmt/format.h>

namespace pacelet::TabScript {

namespace {

constexpr std::string_view listTemplate = R"(set RS to character id 30
set US to character id 31
set out to ""
tell application id "{}"
    repeat with w in windows
        set wid to (id of w) as text
        set out to out & "W" & US & wid & US & (mode of w) & US & ((active tab index of w) as text) & US & (name of w) & RS
        repeat with t in tabs of w
            set out to out & "T" & US & wid & US & ((id of t) as text) & US & (title of t) & US & (URL of t) & RS
        end repeat
    end repeat
end tell
return out)";

/// Addresses a window that is to be changed. The clause on the mode keeps every script of ours away
/// from incognito windows, whatever id it was given.
std::string windowExpression(std::string_view windowID) {
    return fmt::format(R"((first window whose id is {} and mode is "normal"))",
                       literal(windowID, false));
}

std::string newTabLine(std::string_view window, std::string_view url) {
    return fmt::format("make new tab at end of tabs of {} with properties {{URL:{}}}", window,
                       literal(url, true));
}

} // namespace

std::string list(ChromiumBrowser browser) {
    return fmt::format(listTemplate, rawValue(browser));
}

std::string close(const std::vector<BrowserTab>& tabs, ChromiumBrowser browser) {
    std::vector<std::string> lines;
    lines.reserve(tabs.size());
    for (const BrowserTab& tab : tabs) {
        lines.push_back(fmt::format("close (every tab of {} whose id is {})",
                                    windowExpression(tab.windowID), literal(tab.tabID, false)));
    }
    return wrap(lines, browser);
}

std::string merge(const MergePlan& plan, ChromiumBrowser browser) {
    std::vector<std::string> lines;
    lines.reserve(plan.urls.size() + plan.windowsToClose.size());
    const std::string target = windowExpression(plan.targetWindowID);
    for (const std::string& url : plan.urls) {
        lines.push_back(newTabLine(target, url));
    }
    for (const std::string& windowID : plan.windowsToClose) {
        lines.push_back("close " + windowExpression(windowID));
    }
    return wrap(lines, browser);
}

std::string openMemorySaver(ChromiumBrowser browser) {
    return wrap({"if (count of windows) is 0 then make new window",
                 newTabLine("front window", memorySaverURL(browser)), "activate"},
                browser);
}

std::string literal(std::string_view value, bool alwaysQuote) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    if (!alwaysQuote && !value.empty() && std::ranges::all_of(value, isDigit)) {
        return std::string{value};
    }
    std::string quoted;
    quoted.reserve(value.size() + 2);
    quoted += '"';
    for (const char character : value) {
        if (character == '\\' || character == '"') {
            quoted += '\\';
        }
        quoted += character;
    }
    quoted += '"';
    return quoted;
}

std::string wrap(const std::vector<std::string>& lines, ChromiumBrowser browser) {
    std::string script = fmt::format("tell application id \"{}\"\n", rawValue(browser));
    for (const std::string& line : lines) {
        script.append("    ").append(line).append("\n");
    }
    script += "end tell";
    return script;
}

} // namespace pacelet::TabScript
