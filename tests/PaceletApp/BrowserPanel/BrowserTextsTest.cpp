#include "PaceletApp/BrowserPanel/BrowserTexts.h"

#include "Core/Sampling/Shell.h"
#include "PaceletApp/BrowserPanel/BrowserListing.h"
#include "tests/PaceletApp/BrowserPanel/SampleTabs.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

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
    const LaunchError missing{"/usr/bin/osascript",
                              std::make_error_code(std::errc::no_such_file_or_directory)};
    const struct {
        BrowserPhase phase;
        Message message;
    } rows[] = {
        {phaseAfter(BrowserError::notPermitted()),
         {"Pacelet needs permission to see your tabs.",
          "Turn on Google Chrome for Pacelet in System Settings > Privacy & Security > "
          "Automation, then try again."}},
        {phaseAfter(BrowserError::notRunning()),
         {"Google Chrome isn't running.", "Open it and try again."}},
        {phaseAfter(BrowserError::failed("execution error: no (-1728)")),
         {"Couldn't read your tabs.", "execution error: no (-1728)"}},
        {phaseAfter(BrowserError::failed("")), {"Couldn't read your tabs.", ""}},
        {phaseAfter(missing), {"Couldn't read your tabs.", missing.what()}},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(row.phase.isFailure());
        EXPECT_EQ(BrowserTexts::failure(row.phase, ChromiumBrowser::chrome), row.message);
    }
    for (const Kind kind : {Kind::primer, Kind::loading, Kind::loaded}) {
        EXPECT_FALSE((BrowserPhase{kind, {}}.isFailure()));
    }
}

TEST(BrowserTexts, countInEnglish) {
    using namespace BrowserTexts;
    const struct {
        std::string text;
        const char* expected;
    } rows[] = {
        {counts(0, 0), "0 tabs in 0 windows"},
        {counts(1, 1), "1 tabs in 1 window"},
        {counts(140, 9), "140 tabs in 9 windows"},
        {windowTabs(1), "· 1 tabs"},
        {extensions({1, 4567 * 1024}), "Extensions: 1 running, 4.5 MB"},
        {extensions({}), "Extensions: 0 running, 0 KB"},
        {closeDuplicates(1), "Close 1 duplicate"},
        {closeDuplicates(2), "Close 2 duplicates"},
        {closeDuplicatesTitle(1), "Close 1 duplicate tab?"},
        {closeDuplicatesTitle(12), "Close 12 duplicate tabs?"},
        {closeSelected(0), "Close selected (0)"},
        {closeSelectedTitle(1), "Close 1 tab?"},
        {closeSelectedTitle(3), "Close 3 tabs?"},
        {note(ChromiumBrowser::chrome, false),
         "Google Chrome doesn't share memory per tab, so totals are for the whole browser."},
        {note(ChromiumBrowser::chrome, true),
         "Google Chrome doesn't share memory per tab, so totals are for the whole browser. "
         "Incognito windows are never touched."},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.text, row.expected);
    }
}

TEST(BrowserTexts, nameFiveTabsAndCountTheOthers) {
    std::vector<BrowserTab> tabs;
    const auto add = [&](std::string title, std::string url) {
        tabs.push_back({"1/1", "1", "1", std::move(title), std::move(url), false});
    };
    EXPECT_EQ(BrowserTexts::closeMessage(tabs), "");
    add("", "https://Example.com:8080/a?b");
    EXPECT_EQ(BrowserTexts::closeMessage(tabs), "Example.com");
    add("", "about blank");
    add("Inbox", "https://mail.example.com");
    add("Chat", "https://chat.example.com");
    add("News", "https://news.example.com");
    const std::string five = "Example.com\nabout blank\nInbox\nChat\nNews";
    EXPECT_EQ(BrowserTexts::closeMessage(tabs), five);
    add("Map", "https://map.example.com");
    EXPECT_EQ(BrowserTexts::closeMessage(tabs), five + "\nand 1 more");
    add("Map", "https://map.example.com");
    EXPECT_EQ(BrowserTexts::closeMessage(tabs), five + "\nand 2 more");
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
    const struct {
        const std::vector<BrowserWindow>& windows;
        const char* label;
        const char* title;
        int count;
    } rows[] = {
        {lone, "Merge into one window", "Merge into one window?", 2},
        {oneNamed, "Merge into one window", "Merge into one window?", 2},
        {named, "Merge Default profile windows", "Merge your Default profile windows?", 2},
        {work, "Merge Work windows", "Merge your Work windows?", 3},
    };
    for (const auto& row : rows) {
        const BrowserListing listing{row.windows};
        ASSERT_TRUE(listing.plan);
        EXPECT_EQ(BrowserTexts::merge(*listing.plan, listing.profiles), row.label);
        EXPECT_EQ(BrowserTexts::mergeTitle(*listing.plan, listing.profiles), row.title);
        EXPECT_EQ(BrowserTexts::mergeMessage(*listing.plan),
                  "Tabs from " + std::to_string(row.count) +
                      " windows move into one. They'll reload. Other profiles and incognito "
                      "windows aren't touched.");
    }
}

TEST(TabsLook, leavesOutWhatThereIsNothingToSayOf) {
    const BrowserListing empty;
    EXPECT_EQ(tabsLook(empty, ChromiumBrowser::chrome, {}, {}).counts, "0 tabs in 0 windows");
    for (const QString& text : {tabsLook(empty, ChromiumBrowser::chrome, {}, {}).extensions,
                                tabsLook(empty, ChromiumBrowser::chrome, {}, {}).closeDuplicates,
                                tabsLook(empty, ChromiumBrowser::chrome, {}, {}).closeSelected,
                                tabsLook(empty, ChromiumBrowser::chrome, {}, {}).merge}) {
        EXPECT_EQ(text, "");
    }
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
