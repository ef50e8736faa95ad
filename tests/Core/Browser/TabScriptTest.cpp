#include "Core/Browser/TabScript.h"
#include "Core/Browser/TabListing.h"
#include "tests/Support/Table.h"

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

namespace pacelet::TabScript {

namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

std::string fixture(const std::string& name) {
    std::ifstream file{PACELET_FIXTURES "/scripts/" + name + ".applescript", std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

/// A listing written with "|" between fields and ";" behind records.
std::vector<BrowserWindow> parsed(std::string listing) {
    std::ranges::replace(listing, '|', '\x1F');
    std::ranges::replace(listing, ';', '\x1E');
    return parse(listing, "Google Chrome");
}

/// Which tabs of the window are active, one character a tab.
std::string activity(const BrowserWindow& window) {
    std::string marks;
    for (const BrowserTab& tab : window.tabs) {
        marks += tab.isActive ? '*' : '.';
    }
    return marks;
}

const auto hasID = [](const char* id) { return Field(&BrowserWindow::id, id); };

} // namespace

TEST(TabScript, WritesTheScriptsToTheLetter) {
    EXPECT_EQ(list(ChromiumBrowser::chrome), fixture("list"));
    EXPECT_EQ(close({{"", "12", "345", "title", "url", true}, {"", "w-7", "t\"\\9", "", "", false}},
                    ChromiumBrowser::chrome),
              fixture("close"));
    EXPECT_EQ(merge({"12", {R"(https://a.example/?q="x"&p=\)", "2024"}, {"13", ""}, "Work"},
                    ChromiumBrowser::brave),
              fixture("merge"));
    EXPECT_EQ(literal("9081", false), "9081");
    EXPECT_EQ(openMemorySaver(ChromiumBrowser::edge), fixture("openMemorySaver"));
    EXPECT_EQ(merge({"1", {}, {}, {}}, ChromiumBrowser::edge),
              "tell application id \"com.microsoft.edgemac\"\nend tell");
}

TEST(TabScript, ReadsWindowsAndTabs) {
    const auto windows = parsed("W|7|normal|2|Inbox - Google Chrome - Work;"
                                "T|7|70|Inbox|https://mail.example/;T|7|71||about:blank;"
                                "W|9|incognito|1|New Tab - Google Chrome;T|9|90|a\nb|x;"
                                "W|10|normal|1|;");
    const std::vector<BrowserWindow> expected{
        {"7",
         false,
         "Work",
         {{"7/70", "7", "70", "Inbox", "https://mail.example/", false},
          {"7/71", "7", "71", "", "about:blank", true}}},
        {"9", true, std::nullopt, {{"9/90", "9", "90", "a\nb", "x", true}}},
        {"10", false, std::nullopt, {}},
    };
    EXPECT_EQ(windows, expected);
}

TEST(TabScript, DropsWhatItCannotUse) {
    EXPECT_THAT(parsed(""), IsEmpty());
    EXPECT_THAT(parsed("\n\n"), IsEmpty());
    EXPECT_THAT(parsed("T|1|2|t|u;w|1|normal|1|n;W |1|normal|1|n;X|1|normal|1|n;W|1|normal|1;;;"),
                IsEmpty());
    // A tab told before its window, one with a separator of fields and one with a separator of
    // records in its title; the last record has lost its end.
    const auto windows = parsed("T|1|0|t|u;W|1|normal|1|n;T|1|1|a|b|u;T|1|2|a;b|u;T|1|3|t|u;"
                                "T|2|4|t|u;T|1|5|t|u");
    ASSERT_THAT(windows, ElementsAre(hasID("1")));
    EXPECT_THAT(windows[0].tabs,
                ElementsAre(Field(&BrowserTab::id, "1/3"), Field(&BrowserTab::id, "1/5")));
}

TEST(TabScript, ReadsTheActiveIndexAsAnInteger) {
    for (const auto& [field, expected] :
         pacelet::testing::rows<2>("Browser", "active tab of three")) {
        const auto windows = parsed("W|1|normal|" + field + "|n;T|1|1||;T|1|2||;T|1|3||;");
        EXPECT_EQ(activity(windows.at(0)), expected) << field;
    }
}

TEST(TabScript, GivesTabsToTheLastWindowOfTheirID) {
    // Listed again, the window gets the later tabs and counts them anew; an unrelated window
    // between changes nothing.
    const auto windows = parsed("W|1|normal|2|n;T|1|a||;W|2|normal|1|n;T|1|b||;W|1|Normal|1|n;"
                                "T|2|c||;T|1|d||;T|1|e||;");
    ASSERT_THAT(windows, ElementsAre(hasID("1"), hasID("2"), hasID("1")));
    EXPECT_EQ(activity(windows[0]), ".*");
    EXPECT_EQ(activity(windows[1]), "*");
    EXPECT_EQ(activity(windows[2]), "*.");
    EXPECT_TRUE(windows[2].isIncognito) << "any mode but \"normal\"";
}

} // namespace pacelet::TabScript
