#include "Core/Browser/TabCleanup.h"
#include "tests/Support/Table.h"

#include <gmock/gmock.h>

namespace pacelet::TabCleanup {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

BrowserWindow window(const std::string& id, std::optional<std::string> profile,
                     const std::vector<std::string>& urls, bool isIncognito = false) {
    BrowserWindow made{id, isIncognito, std::move(profile), {}};
    for (const std::string& url : urls) {
        const std::string tabID = std::to_string(made.tabs.size());
        made.tabs.push_back({id + "/" + tabID, id, tabID, "", url, tabID == "0"});
    }
    return made;
}

std::vector<std::string> duplicateIDs(const std::vector<BrowserWindow>& windows) {
    std::vector<std::string> ids;
    for (const BrowserTab& tab : duplicates(windows)) {
        ids.push_back(tab.id);
    }
    return ids;
}

constexpr auto none = std::nullopt;

} // namespace

TEST(TabCleanup, ReadsWindowNamesAndAddresses) {
    for (const auto& [name, expected] : testing::rows<2>("Browser", "profiles by window name")) {
        EXPECT_EQ(testing::shown(profile(name, "Google Chrome")), expected) << name;
    }
    for (const auto& [url, expected] : testing::rows<2>("Browser", "normalized addresses")) {
        EXPECT_EQ(normalize(url), expected) << url;
    }
    const std::string huge = "data:," + std::string(4'000'000, 'A');
    EXPECT_EQ(normalize(huge), huge);
    for (const auto& [url, expected] : testing::rows<2>("Browser", "hosts")) {
        EXPECT_EQ((BrowserTab{"", "", "", "", url, false}.host()), expected) << url;
    }
}

TEST(TabCleanup, FindsDuplicatesWithinAProfile) {
    EXPECT_THAT(duplicates({}), IsEmpty());
    EXPECT_THAT(
        duplicateIDs({
            window("1", none, {"https://a.com/?x=1&y=2", "https://a.com", "https://b.com"}),
            window("2", none, {"https://b.com"}, true),
            window("3", "Work", {"https://a.com", "HTTPS://A.com/#top"}),
            window("4", "", {"https://A.com/", "https://a.com/?y=2&x=1", "https://c.com/A"}),
            window("5", none, {"https://c.com/a", "https://b.com/", "https://b.com//"}),
        }),
        ElementsAre("3/1", "4/0", "5/1"));
}

TEST(TabCleanup, PlansTheMergeOfTheLargestProfile) {
    const auto plan =
        mergePlan({window("w1", "Work", {"a"}), window("h1", "Home", {"b", "c", "d"}),
                   window("x", none, {"q"}), window("h2", "Home", {"e", "f", "f", "g", "h"}),
                   window("i", "Home", {"z"}, true), window("w2", "Work", {"i", "j"}),
                   window("h3", "Home", {"1", "2", "3", "4", "5"}), window("h4", "Home", {})});
    EXPECT_EQ(
        plan,
        (MergePlan{"h2", {"b", "c", "d", "1", "2", "3", "4", "5"}, {"h1", "h3", "h4"}, "Home"}));
}

TEST(TabCleanup, PlansTheFirstOfEqualProfiles) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    for (std::size_t run = 0; run < letters.size(); ++run) {
        std::vector<BrowserWindow> windows;
        for (std::size_t index = 0; index < 2 * letters.size(); ++index) {
            const char letter = letters[(index + run) % letters.size()];
            windows.push_back(window(std::to_string(index), std::string{letter}, {"u"}));
        }
        EXPECT_EQ(mergePlan(windows), (MergePlan{"0", {"u"}, {"26"}, letters.substr(run, 1)}));
    }
}

TEST(TabCleanup, PlansNothingWithoutTwoWindowsOfAProfile) {
    EXPECT_EQ(mergePlan({}), none);
    EXPECT_EQ(mergePlan({window("1", none, {"a"}), window("2", "Work", {"a"}),
                         window("3", "Home", {"a"}), window("4", none, {"a"}, true)}),
              none);
    EXPECT_EQ(mergePlan({window("1", none, {"a"}), window("2", none, {"b"}, true),
                         window("3", "", {"c", "d"})}),
              (MergePlan{"3", {"a"}, {"1"}, ""}));
    // An id told twice never closes the window that stays.
    EXPECT_EQ(mergePlan({window("1", none, {"a"}), window("1", none, {"b"})}),
              (MergePlan{"1", {}, {}, none}));
}

TEST(TabCleanup, MeasuresTheExtensionsOfOneBrowser) {
    const std::string app = "/Applications/Google Chrome.app";
    const std::string helper = app + "/Contents/Helper --type=renderer --extension-process";
    const struct {
        std::string listing;
        ExtensionUsage expected;
    } rows[] = {
        {"", {}},
        {"  123   4567 " + helper + "\n\n 7 1 " + helper + " --x\n",
         {2, std::int64_t{4568} * 1024}},
        {"1 10 " + app + "/Contents/Helper --type=renderer\n", {}},
        {"1 10 /Applications/Brave Browser.app/Contents/Helper --extension-process\n", {}},
        {"1 10  " + helper, {}}, // the second blank belongs to the command
        {"1 10 /tmp" + helper, {}},
        {"1 10\n10 \n1 x " + helper + "\n1 1.5 " + helper + "\n1 99999999999999999999 " + helper,
         {}},
        // Sizes that leave the range cost their own line only.
        {"1 9223372036854775807 " + helper + "\n2 8 " + helper, {1, 8192}},
        {"1 9007199254740991 " + helper + "\n2 1 " + helper, {1, 9223372036854774784}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(extensions(row.listing, app), row.expected) << row.listing;
    }
    EXPECT_EQ(extensions("1 10 " + helper, "/Applications/Google Chrome"), ExtensionUsage{});
}

} // namespace pacelet::TabCleanup
