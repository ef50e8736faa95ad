#include "Hosts/Simulated/Tools/OSAScript.h"

#include "Core/Browser/TabScript.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "tests/Support/Table.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <regex>
#include <string>
#include <vector>

namespace pacelet::Simulated {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string chromeID = "com.google.Chrome";

std::string tell(const std::string& body, const std::string& application = chromeID) {
    return "tell application id \"" + application + "\"\n    " + body + "\nend tell";
}

std::string window(const std::string& id) {
    return "(first window whose id is " + id + " and mode is \"normal\")";
}

const std::string listing = TabScript::list(ChromiumBrowser::chrome);

/// Three windows: 10 with tabs 11 and 12, 20 with tab 21, and the incognito 30 with tab 31.
class Scripts : public ::testing::Test {
protected:
    Scripts() {
        const auto world = mac->machine.lock();
        Browser& browser = world->browsers.at(chromeID);
        browser.windows = {
            {10,
             false,
             "Work",
             1,
             {{11, "One", "https://a.example/"}, {12, "Two \"2\"", "https://b.example/"}}},
            {20, false, "Home", 0, {{21, "Three", "https://c.example/"}}},
            {30, true, "", 0, {{31, "Secret", "https://d.example/"}}}};
        settle(*world, chromeID);
    }

    Shell::Output run(const std::string& script) {
        return mac->tools.run("/usr/bin/osascript", {"-e", script});
    }

    /// "window: tab tab", a window each.
    std::vector<std::string> tabs() {
        std::vector<std::string> lines;
        for (const TabWindow& each : mac->machine.lock()->browsers.at(chromeID).windows) {
            std::string line = std::to_string(each.id) + ":";
            for (const Tab& tab : each.tabs) {
                line += " " + (tab.id < 100 ? std::to_string(tab.id) : tab.url);
            }
            lines.push_back(line);
        }
        return lines;
    }

    std::size_t renderers() {
        const auto world = mac->machine.lock();
        const auto& all = world->processes.all();
        return static_cast<std::size_t>(std::count_if(all.begin(), all.end(), [](const Process& p) {
            return p.arguments.starts_with("--type=renderer --lang");
        }));
    }

    std::unique_ptr<SimulatedMac> mac = makeScenario("chrome-tabs");
};

TEST_F(Scripts, TheListingGivesEveryWindowAndTab) {
    const Shell::Output output = run(listing);
    EXPECT_EQ(output.stderr, "");
    std::string expected = "W|10|normal|2|Two \"2\" - Google Chrome - Work;"
                           "T|10|11|One|https://a.example/;T|10|12|Two \"2\"|https://b.example/;"
                           "W|20|normal|1|Three - Google Chrome - Home;"
                           "T|20|21|Three|https://c.example/;"
                           "W|30|incognito|1|Secret - Google Chrome (Incognito);"
                           "T|30|31|Secret|https://d.example/;\n";
    std::replace(expected.begin(), expected.end(), '|', '\x1f');
    std::replace(expected.begin(), expected.end(), ';', '\x1e');
    EXPECT_EQ(output.stdout, expected);
}

TEST_F(Scripts, ClosingTakesProcessesAlongAndMergingKeepsAddressesToTheLetter) {
    EXPECT_EQ(renderers(), 4U);
    const std::string close = "close (every tab of " + window("10") + " whose id is 11)";
    for (int round = 0; round < 2; ++round) { // the second time, there is nothing to close
        EXPECT_EQ(run(tell(close)).stderr, "");
        EXPECT_THAT(tabs(), ElementsAre("10: 12", "20: 21", "30: 31"));
        EXPECT_EQ(renderers(), 3U);
    }
    EXPECT_THAT(run(listing).stdout, HasSubstr("normal\x1f"
                                               "1\x1fTwo"))
        << "the next tab is active";
    const Shell::Output output =
        run(tell("make new tab at end of tabs of " + window("10") +
                 " with properties {URL:\"https://c.example/?q=\\\"a\\\\b\\\"\"}\n    close " +
                 window("20")));
    EXPECT_EQ(output.stderr, "");
    EXPECT_THAT(tabs(), ElementsAre("10: 12 https://c.example/?q=\"a\\b\"", "30: 31"));
}

TEST_F(Scripts, TheSettingsPageOpensAWindowOnlyWhereThereIsNone) {
    const std::string open =
        tell("if (count of windows) is 0 then make new window\n    make new tab at end of tabs of "
             "front window with properties {URL:\"chrome://settings/performance\"}\n    activate");
    EXPECT_EQ(run(open).status, 0);
    EXPECT_EQ(tabs().size(), 3U);
    mac->machine.lock()->browsers.at(chromeID).windows.clear();
    EXPECT_EQ(run(open).stderr, "");
    EXPECT_THAT(tabs(), ElementsAre(EndsWith("chrome://settings/performance")));
}

TEST_F(Scripts, MistakesAreReportedAsTheSystemDoesAndChangeNothing) {
    auto table = pacelet::testing::rows<2>("Simulated", "scripts that fail");
    table.push_back({std::string(5000, '('), "(-2741)\n"});
    const std::pair<std::regex, std::string> marks[] = {
        {std::regex{R"(\(tell\))"}, "tell application id \"com.google.Chrome\"\n    "},
        {std::regex{R"(\(end\))"}, "\nend tell"},
        {std::regex{R"(\(close\))"}, "close (every tab of (window 10) whose id is 11)"},
        {std::regex{R"(\(window ("?\d+"?)\))"}, window("$1")}};
    const std::vector<std::string> before = tabs();
    for (auto& [script, ending] : table) {
        for (const auto& [mark, text] : marks) {
            script = script.size() < 1000 ? std::regex_replace(script, mark, text) : script;
        }
        const Shell::Output output = run(script);
        EXPECT_EQ(output.status, 1) << script;
        EXPECT_EQ(output.stdout, "") << script;
        EXPECT_THAT(output.stderr, EndsWith(ending)) << script;
        EXPECT_EQ(tabs(), before) << script;
    }
    EXPECT_THAT(run(tell("close " + window("99"))).stderr,
                StartsWith("44:100: execution error: Google Chrome got an error: "));
}

TEST_F(Scripts, AWindowGoesWithItsLastTab) {
    EXPECT_EQ(run(tell("close (every tab of " + window("20") + " whose id is 21)")).stderr, "");
    EXPECT_THAT(tabs(), ElementsAre("10: 11 12", "30: 31"));
}

TEST_F(Scripts, AnErrorHalfWayLeavesWhatWasDone) {
    EXPECT_EQ(run(tell("close " + window("20") + "\n    close " + window("99"))).status, 1);
    EXPECT_THAT(tabs(), ElementsAre("10: 11 12", "30: 31"));
    EXPECT_EQ(renderers(), 3U);
    mac->machine.lock()->browsers.at(chromeID).windows.clear();
    EXPECT_THAT(run(tell("close front window")).stderr, EndsWith("(-1719)\n"));
    EXPECT_EQ(run(listing).stdout, "\n");
}

} // namespace
} // namespace pacelet::Simulated
