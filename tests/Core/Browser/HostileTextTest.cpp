#include "Core/Browser/TabListing.h"
#include "Core/Browser/TabScript.h"
#include "Core/Support/Text.h"
#include "tests/Support/Properties.h"
#include "tests/Support/Table.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace pacelet {

namespace {

using Values = std::vector<std::string>;

/// A script as its compiler sees it: the source with "$" for each string and number outside one,
/// and their values in order.
struct Script {
    std::string shape;
    Values values;

    bool operator==(const Script&) const = default;
};

/// Nothing for a string without end, or with an escape that is not one of ours.
std::optional<Script> compiled(std::string_view source) {
    Script script;
    for (std::size_t at = 0; at < source.size(); ++at) {
        const bool isNumber = source[at] >= '0' && source[at] <= '9';
        if (source[at] != '"' && !isNumber) {
            script.shape += source[at];
            continue;
        }
        script.shape += '$';
        std::string& value = script.values.emplace_back();
        if (isNumber) {
            const std::size_t end =
                std::min(source.find_first_not_of("0123456789", at), source.size());
            value = source.substr(at, end - at);
            at = end - 1;
            continue;
        }
        for (++at; at < source.size() && source[at] != '"'; ++at) {
            if (source[at] == '\\' && ++at < source.size() && source[at] != '\\' &&
                source[at] != '"') {
                return std::nullopt;
            }
            value += source[std::min(at, source.size() - 1)];
        }
        if (at >= source.size()) {
            return std::nullopt;
        }
    }
    return script;
}

/// All that might open a way out of a string, a line or a record.
std::string hostile() {
    static const auto generator = [] {
        std::vector<std::string> pieces;
        for (const auto& [piece] : testing::rows<1>("Browser", "pieces of hostile text")) {
            pieces.push_back(piece);
        }
        return testing::textOf(std::move(pieces));
    }();
    return *generator;
}

/// The same without separators.
std::string hostileField() {
    std::string text = hostile();
    std::erase_if(text, [](char character) { return character == '\x1E' || character == '\x1F'; });
    return text;
}

const std::string window = "(first window whose id is $ and mode is $)";

std::string block(const std::string& lines) {
    return "tell application id $\n" + lines + "end tell";
}

BrowserTab hostileTab(const std::string& windowID, std::size_t index) {
    BrowserTab tab{"", windowID, std::to_string(index) + hostileField(), "", hostileField(), false};
    tab.id = tab.windowID + "/" + tab.tabID;
    tab.isActive = index == 0;
    return tab;
}

std::string record(const Values& fields) {
    return fmt::format("{}\x1E", fmt::join(fields, "\x1F"));
}

std::string listing(const BrowserWindow& source) {
    std::string text = record({"W", source.id, source.isIncognito ? "incognito" : "normal", "1",
                               source.profile ? "t - App - " + *source.profile : "t - App"});
    for (const BrowserTab& tab : source.tabs) {
        text += record({"T", tab.windowID, tab.tabID, tab.title, tab.url});
    }
    return text;
}

} // namespace

TEST(HostileText, NeverLeavesItsLiteral) {
    testing::checkProperty(60'000, [] {
        const std::string value = hostile();
        const bool alwaysQuote = *rc::gen::arbitrary<bool>();
        const std::string literal = TabScript::literal(value, alwaysQuote);
        RC_ASSERT(compiled(literal) == (Script{"$", {value}}));
        const bool isBare = !alwaysQuote && parseInteger<std::int64_t>('1' + value).has_value();
        RC_ASSERT((literal.front() != '"') == (isBare && !value.empty()));
    });
}

TEST(HostileText, NeverChangesTheShapeOfAScript) {
    testing::checkProperty(15'000, [] {
        std::string closeLines;
        Values closeValues{"com.google.Chrome"};
        std::vector<BrowserTab> tabs;
        for (int count = *rc::gen::inRange(0, 3); count > 0; --count) {
            tabs.push_back({hostile(), hostile(), hostile(), hostile(), hostile(), true});
            closeLines += "    close (every tab of " + window + " whose id is $)\n";
            closeValues.insert(closeValues.end(),
                               {tabs.back().windowID, "normal", tabs.back().tabID});
        }
        RC_ASSERT(compiled(TabScript::close(tabs, ChromiumBrowser::chrome)) ==
                  (Script{block(closeLines), closeValues}));

        const MergePlan plan{hostile(), {hostile(), hostile()}, {hostile()}, hostile()};
        const std::string makeLine =
            "    make new tab at end of tabs of " + window + " with properties {URL:$}\n";
        const Values mergeValues{"com.brave.Browser", plan.targetWindowID,    "normal",
                                 plan.urls[0],        plan.targetWindowID,    "normal",
                                 plan.urls[1],        plan.windowsToClose[0], "normal"};
        RC_ASSERT(compiled(TabScript::merge(plan, ChromiumBrowser::brave)) ==
                  (Script{block(makeLine + makeLine + "    close " + window + "\n"), mergeValues}));
    });
}

TEST(HostileText, ComesBackFromAListing) {
    testing::checkProperty(5'000, [] {
        std::vector<BrowserWindow> windows;
        std::string text;
        for (std::size_t index = 0; index < 3; ++index) {
            const std::string id = std::to_string(index) + hostileField();
            windows.push_back({id, *rc::gen::arbitrary<bool>(), std::nullopt, {}});
            const std::string profile{trimmed(hostileField(), " \t")};
            if (!profile.empty()) {
                windows.back().profile = profile;
            }
            for (std::size_t tab = 0; tab < index; ++tab) {
                windows.back().tabs.push_back(hostileTab(id, tab));
            }
            text += listing(windows.back());
        }
        RC_ASSERT(TabScript::parse(text, "App") == windows);
    });
}

TEST(HostileText, CostsNoOtherTabOrWindowOfAListing) {
    testing::checkProperty(10'000, [] {
        const std::string title = hostile();
        const auto windows = TabScript::parse(
            record({"W", "first", "normal", "2", ""}) + record({"T", "first", "x", "", "u"}) +
                record({"T", "first", "damaged", title, "u"}) +
                record({"W", "second", "normal", "1", ""}) + hostile() + "\x1E" +
                record({"T", "second", "y", "", "u"}) + record({"T", "first", "z", "", "u"}),
            "App");
        std::string found;
        for (const BrowserWindow& each : windows) {
            for (const BrowserTab& tab : each.tabs) {
                const bool isIntact = tab.tabID == "damaged" && tab.title == title;
                found += tab.tabID.size() == 1 && tab.tabID > "w" ? tab.id : isIntact ? "+" : "";
            }
        }
        const bool isWhole = title.find_first_of("\x1E\x1F") == std::string::npos;
        RC_ASSERT(found == (isWhole ? "first/x+first/zsecond/y" : "first/xfirst/zsecond/y"));
    });
}

TEST(HostileText, IsNormalizedInTheNamedPiecesOnly) {
    const auto host = testing::textOf({"a", "B", "Z", ".", "-", "%aF", "%C3", "9", "~"});
    const auto rest = testing::textOf({"/", "/", "A", "b", "%2f", "?", ":", "@", "//", ".", "&Q="});
    testing::checkProperty(20'000, [&] {
        const std::string authority = "://U@" + *host;
        const std::string end = *rc::gen::elementOf(Values{"", "/", ":80/", "?", "#", "/#F/"});
        const std::string tail = end.starts_with("#") || end.empty() ? "" : *rest;
        const std::string url = "hTTp" + authority + end + tail;
        std::string expected = url.substr(0, url.find('#'));
        for (std::size_t at = 0; at < 4 + authority.size(); at += url[at] == '%' ? 3 : 1) {
            if (url[at] != 'U') {
                expected[at] = asciiLowercased(url.substr(at, 1)).front();
            }
        }
        if (expected.ends_with('/')) {
            expected.pop_back();
        }
        RC_ASSERT(TabCleanup::normalize(url) == expected);
    });
}

} // namespace pacelet
