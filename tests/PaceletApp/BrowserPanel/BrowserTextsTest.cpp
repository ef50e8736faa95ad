#include "PaceletApp/BrowserPanel/BrowserTexts.h"

#include "Core/Platform/ShellOutput.h"
#include "PaceletApp/BrowserPanel/BrowserListing.h"
#include "tests/PaceletApp/Support/Table.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

/// A window of tabs with these titles; the first is active.
BrowserWindow window(const std::string& id, const std::vector<std::string>& titles,
                     std::optional<std::string> profile = {}) {
    BrowserWindow made;
    made.id = id;
    made.profile = std::move(profile);
    for (const std::string& title : titles) {
        const std::string number = std::to_string(made.tabs.size());
        made.tabs.push_back({id + "/" + number, id, number, title, "https://example.com/" + number,
                             made.tabs.empty()});
    }
    return made;
}

BrowserWindow incognito(const std::string& id, const std::vector<std::string>& titles) {
    BrowserWindow made = window(id, titles);
    made.isIncognito = true;
    return made;
}
using BrowserTexts::Message;
using Kind = BrowserPhase::Kind;

TEST(BrowserTexts, speakOfTheBrowserByItsName) {
    EXPECT_EQ(BrowserTexts::primer(ChromiumBrowser::brave),
              (Message{"Let Pacelet see your Brave Browser tabs",
                       "macOS will ask you to allow Pacelet to control Brave Browser. Pacelet only "
                       "reads tab titles and addresses, and only closes tabs you choose."}));
    EXPECT_EQ(BrowserTexts::loading(ChromiumBrowser::edge), "Reading your Microsoft Edge tabs…");
}

TEST(BrowserTexts, everyErrorHasItsMessage) {
    const std::string unread = "Couldn't read your tabs.";
    const LaunchError missing{"/usr/bin/osascript",
                              std::make_error_code(std::errc::no_such_file_or_directory)};
    const Table<BrowserPhase, Message> rows = {
        {phaseAfter(BrowserError::notPermitted()),
         {"Pacelet needs permission to see your tabs.",
          "Turn on Google Chrome for Pacelet in System Settings > Privacy & Security > "
          "Automation, then try again."}},
        {phaseAfter(BrowserError::notRunning()),
         {"Google Chrome isn't running.", "Open it and try again."}},
        {phaseAfter(BrowserError::failed("error: no (-1728)")), {unread, "error: no (-1728)"}},
        {phaseAfter(missing), {unread, missing.what()}},
    };
    for (const auto& [phase, message] : rows) {
        EXPECT_TRUE(phase.isFailure());
        EXPECT_EQ(BrowserTexts::failure(phase, ChromiumBrowser::chrome), message);
    }
    for (const Kind kind : {Kind::primer, Kind::loading, Kind::loaded}) {
        EXPECT_FALSE((BrowserPhase{kind, {}}.isFailure()));
    }
}

TEST(BrowserTexts, countInEnglish) {
    using namespace BrowserTexts;
    const Table<std::string, const char*> rows = {
        {counts(1, 1), "1 tabs in 1 window"},
        {counts(140, 9), "140 tabs in 9 windows"},
        {windowTabs(1), "· 1 tabs"},
        {extensions({1, std::int64_t{4567} * 1024}), "Extensions: 1 running, 4.5 MB"},
        {closeDuplicates(1), "Close 1 duplicate"},
        {closeDuplicates(2), "Close 2 duplicates"},
        {closeDuplicatesTitle(1), "Close 1 duplicate tab?"},
        {closeDuplicatesTitle(12), "Close 12 duplicate tabs?"},
        {closeSelectedTitle(1), "Close 1 tab?"},
        {closeSelectedTitle(3), "Close 3 tabs?"},
        {note(ChromiumBrowser::chrome, false),
         "Google Chrome doesn't share memory per tab, so totals are for the whole browser."},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(text, expected);
    }
}

TEST(BrowserTexts, nameFiveTabsAndCountTheOthers) {
    std::vector<BrowserTab> tabs;
    EXPECT_EQ(BrowserTexts::closeMessage(tabs), "");
    for (const auto& [title, url] : Table<std::string, std::string>{
             {"", "https://Example.com:8080/a?b"}, {"", "about blank"}, {"C", ""}, {"D", ""}}) {
        tabs.push_back({"1/1", "1", "1", title, url, false});
    }
    tabs.push_back({"1/1", "1", "1", "E", "https://e.example.com", false});
    const std::string five = "Example.com\nabout blank\nC\nD\nE";
    for (const char* const more : {"", "\nand 1 more", "\nand 2 more"}) {
        EXPECT_EQ(BrowserTexts::closeMessage(tabs), five + more);
        tabs.push_back(tabs.back());
    }
}

TEST(BrowserTexts, mergeNamesTheProfileOnlyAmongSeveral) {
    const std::vector<BrowserWindow> lone{window("1", {"a"}), window("2", {"b", "c"}),
                                          incognito("3", {"d"})};
    std::vector<BrowserWindow> named = lone;
    named.push_back(window("4", {}, "Work"));
    std::vector<BrowserWindow> work = named;
    work.push_back(window("5", {"e"}, "Work"));
    work.push_back(window("6", {"f"}, "Work"));
    const std::vector<BrowserWindow> oneNamed{window("1", {"a"}, "Work"), window("2", {}, "Work")};
    const Table<std::vector<BrowserWindow>, const char*, const char*, int> rows = {
        {lone, "Merge into one window", "Merge into one window?", 2},
        {oneNamed, "Merge into one window", "Merge into one window?", 2},
        {named, "Merge Default profile windows", "Merge your Default profile windows?", 2},
        {work, "Merge Work windows", "Merge your Work windows?", 3},
    };
    for (const auto& [windows, label, title, count] : rows) {
        const BrowserListing listing{windows};
        ASSERT_TRUE(listing.plan);
        EXPECT_EQ(BrowserTexts::merge(*listing.plan, listing.profiles), label);
        EXPECT_EQ(BrowserTexts::mergeTitle(*listing.plan, listing.profiles), title);
        EXPECT_EQ(BrowserTexts::mergeMessage(*listing.plan),
                  "Tabs from " + std::to_string(count) +
                      " windows move into one. They'll reload. Other profiles and incognito "
                      "windows aren't touched.");
    }
}

TEST(TabsLook, leavesOutWhatThereIsNothingToSayOf) {
    const BrowserListing empty;
    const TabsLook look = tabsLook(empty, ChromiumBrowser::chrome, {}, {});
    EXPECT_EQ(look.counts, "0 tabs in 0 windows");
    EXPECT_EQ(look.extensions + look.closeDuplicates + look.closeSelected + look.merge, "");
    // A selection of tabs that have all gone can still be dropped by its button.
    EXPECT_EQ(tabsLook(empty, ChromiumBrowser::chrome, {}, {"1/1"}).closeSelected,
              "Close selected (0)");
}

TEST(TabRows, standWindowByWindowWithIncognitoOutOfReach) {
    const auto rows =
        tabRows({window("1", {"a", ""}, "Work"), window("2", {}), incognito("3", {"secret"})});
    std::string shown;
    for (const TabRow& row : rows) {
        shown += (row.isHead() ? row.symbol : QStringLiteral(" ")).toStdString() + "|" +
                 row.title.toStdString() + "|" + row.subtitle.toStdString() +
                 (row.isActive ? "|active" : "") + (row.isSelectable ? "|selectable" : "") +
                 (row.isLast ? "|last" : "") + "\n";
    }
    EXPECT_EQ(shown, "macwindow|Work|· 2 tabs\n"
                     " |a|example.com|active|selectable\n"
                     " |https://example.com/1|example.com|selectable|last\n"
                     "macwindow|Default profile|· 0 tabs|last\n"
                     "eyeglasses|Incognito (not touched)|· 1 tabs\n"
                     " |secret|example.com|active|last\n");
}

} // namespace
} // namespace pacelet
