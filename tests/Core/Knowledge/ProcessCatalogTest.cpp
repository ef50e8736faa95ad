#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Platform/HostAbilities.h"
#include "tests/Support/Processes.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace pacelet {
namespace {

CatalogEntry entry(const std::string& id, CatalogEntry::Match match) {
    CatalogEntry made{id, std::move(match), id + " title", id + " summary.", id + " why."};
    made.guide = id + "-guide";
    made.verdict = Verdict::safe;
    return made;
}

const ProcessCatalog catalog{{
    entry("prefix", {{}, {"/System/Library/mds"}, {"com.example.foo"}}),
    entry("broad", {{}, {"/opt/"}, {"com.example."}}),
    entry("narrow", {{}, {"/opt/tool/"}, {}}),
    entry("mds", {{"other", "mds"}, {}, {}}),
    entry("later", {{"mds", "late"}, {}, {"org."}}),
}};

void expectExplained(const Explanation& found, const std::string& title, const std::string& summary,
                     const std::string& verdict) {
    EXPECT_EQ(found.title, title);
    EXPECT_EQ(found.summary, summary);
    EXPECT_EQ(rawValue(found.verdict), verdict);
    EXPECT_EQ(found.symbol, "gearshape") << "no entry here has a symbol";
    // A fallback has nothing of an entry, and one with a fix is an application's process.
    EXPECT_EQ(found.isFallback, !found.entryID);
    EXPECT_EQ(found.isFallback, !found.whyHigh);
    EXPECT_EQ(found.isFallback, !found.guide);
    EXPECT_EQ(found.fixes,
              title == "Part of Tower" ? std::vector{FixID::quitApp} : std::vector<FixID>{});
}

TEST(ProcessCatalog, FirstMatchWinsNamesBeatPathsAndThereAreFallbacks) {
    for (const auto& [name, path, app, title, summary, verdict] :
         testing::rows<6>("Knowledge", "explanations of processes")) {
        SCOPED_TRACE(name + ' ' + path);
        const auto owner = app == "none" ? std::nullopt : std::optional{app};
        expectExplained(catalog.explain(name, path, owner), title, summary, verdict);
    }
    for (const auto& [itemLabel, app, title, summary, verdict] :
         testing::rows<5>("Knowledge", "explanations of background items")) {
        SCOPED_TRACE(itemLabel);
        const auto owner = app == "none" ? std::nullopt : std::optional{app};
        expectExplained(catalog.explainLabel(itemLabel, owner), title, summary, verdict);
    }
    const ProcessCatalog all{{entry("all", {{}, {""}, {}})}};
    EXPECT_EQ(all.explain("x", "", {}).entryID, "all");
    EXPECT_EQ(catalog.explain("mds", "", {}).whyHigh, "mds why.");
    EXPECT_EQ(catalog.explain("mds", "", {}).guide, "mds-guide");
    EXPECT_EQ(catalog.explain(testing::app("Tower", 1)).title, "Part of Tower");
    EXPECT_EQ(catalog.explain(testing::lone(1, "/x/mds", 1)).entryID, "mds");
}

TEST(FixID, SpeaksOfTheGroup) {
    const ProcessGroup tower = testing::app("Tower", 1);
    EXPECT_EQ(title(FixID::quitApp, &tower), "Quit Tower");
    EXPECT_EQ(title(FixID::quitApp, nullptr), "Quit app");
    EXPECT_EQ(title(FixID::restartMac, &tower), "Restart…");
}

TEST(FixID, IsOfferedUnlessTheMachineLacksJustIt) {
    using enum FixID;
    const HostAbilities noIndex{.missingPanes = {SettingsPane::battery}, .rebuildsIndex = false};
    const std::pair<HostAbilities, std::set<FixID>> cases[] = {
        {{}, {}},
        {noIndex, {openBatterySettings, rebuildSpotlightIndex}},
        {{.freesSpace = false}, {openTidyvault}},
        {{.reviewsTabs = false}, {reviewTabs}},
        {{.restarts = false}, {restartMac}}};
    for (const auto& [abilities, missing] : cases) {
        for (FixID fix = explain; fix <= restartMac; fix = FixID{static_cast<int>(fix) + 1}) {
            EXPECT_NE(offered(fix, abilities).has_value(), missing.contains(fix)) << rawValue(fix);
        }
    }
}

} // namespace
} // namespace pacelet
