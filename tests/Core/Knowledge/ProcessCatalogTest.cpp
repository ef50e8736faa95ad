#include "Core/Knowledge/ProcessCatalog.h"

#include "tests/Support/Processes.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

CatalogEntry entry(const std::string& id, CatalogEntry::Match match) {
    CatalogEntry made{id, std::move(match), id + " title", id + " summary.", id + " why."};
    made.guide = id + "-guide";
    return made;
}

const ProcessCatalog catalog{{
    entry("prefix", {{}, {"/System/Library/mds"}, {"com.example.foo"}}),
    entry("broad", {{}, {"/opt/"}, {"com.example."}}),
    entry("narrow", {{}, {"/opt/tool/"}, {}}),
    entry("mds", {{"other", "mds"}, {}, {}}),
    entry("later", {{"mds", "late"}, {}, {"org."}}),
}};

std::string idOf(const Explanation& explanation) {
    return explanation.entryID.value_or("-");
}

TEST(ProcessCatalog, FirstMatchWinsAndNamesBeatPaths) {
    EXPECT_EQ(idOf(catalog.explain("mds", "/System/Library/mds", {})), "mds");
    EXPECT_EQ(idOf(catalog.explain("MDS", "/System/Library/mds", {})), "prefix");
    EXPECT_EQ(idOf(catalog.explain("late", "/opt/late", {})), "later");
    EXPECT_EQ(idOf(catalog.explain("x", "/opt/tool/x", {})), "broad") << "file order, not length";
    EXPECT_EQ(idOf(catalog.explain("x", "", {})), "-");
    EXPECT_EQ(idOf(ProcessCatalog{{entry("all", {{}, {""}, {}})}}.explain("x", "", {})), "all");
}

TEST(ProcessCatalog, CopiesTheEntry) {
    const Explanation found = catalog.explain("mds", "", {});
    EXPECT_EQ(found.title, "mds title");
    EXPECT_EQ(found.whyHigh, "mds why.");
    EXPECT_EQ(found.guide, "mds-guide");
    EXPECT_EQ(found.symbol, "gearshape") << "an entry without a symbol";
    EXPECT_FALSE(found.isFallback);
}

TEST(ProcessCatalog, FallsBack) {
    const auto fallback = [](const std::string& path, const std::optional<std::string>& app) {
        const Explanation explanation = catalog.explain("x", path, app);
        EXPECT_TRUE(explanation.isFallback);
        EXPECT_EQ(explanation.symbol, "gearshape");
        EXPECT_FALSE(explanation.entryID || explanation.whyHigh || explanation.idleNote ||
                     explanation.guide);
        return explanation;
    };
    for (const std::string prefix :
         {"/System/", "/usr/libexec/", "/usr/sbin/", "/sbin/", "/usr/bin/", "/bin/"}) {
        const Explanation system = fallback(prefix + "x", "Terminal");
        EXPECT_EQ(system.title, "Part of macOS");
        EXPECT_EQ(system.summary, "A built-in macOS process.");
        EXPECT_EQ(system.verdict, Verdict::leave);
        EXPECT_TRUE(system.fixes.empty());
    }
    const Explanation ofApp = fallback("/somewhere/bin/ruby", "Tower");
    EXPECT_EQ(ofApp.title, "Part of Tower");
    EXPECT_EQ(ofApp.summary, "Belongs to Tower. Quitting Tower stops it.");
    EXPECT_EQ(ofApp.verdict, Verdict::safe);
    EXPECT_EQ(ofApp.fixes, std::vector{FixID::quitApp});
    const Explanation unknown = fallback("/usr/local/bin/x", {});
    EXPECT_EQ(unknown.title, "Not in our list yet");
    EXPECT_EQ(unknown.summary, "We don't have an explanation for this process yet.");
    EXPECT_EQ(unknown.verdict, Verdict::review);
}

TEST(ProcessCatalog, ExplainsGroupsByTheirPrimary) {
    EXPECT_EQ(catalog.explain(testing::app("Tower", 1)).title, "Part of Tower");
    EXPECT_EQ(idOf(catalog.explain(testing::lone(1, "/x/mds", 1))), "mds");
}

TEST(ProcessCatalog, ExplainsBackgroundItemsByLabelPrefix) {
    EXPECT_EQ(idOf(catalog.explainLabel("com.example.foo.agent", {})), "prefix");
    EXPECT_EQ(idOf(catalog.explainLabel("com.example.bar", "App")), "broad");
    const Explanation owned = catalog.explainLabel("net.other", "Tower");
    EXPECT_EQ(owned.title, "Added by Tower");
    EXPECT_EQ(owned.summary, "A background helper installed by Tower.");
    const Explanation unknown = catalog.explainLabel("net.other", {});
    EXPECT_EQ(unknown.title, "Unknown developer");
    EXPECT_EQ(unknown.summary, "A background helper from a developer Pacelet doesn't recognize.");
    EXPECT_EQ(owned.verdict, Verdict::review);
    EXPECT_TRUE(unknown.isFallback && owned.isFallback && unknown.fixes.empty());
}

TEST(FixID, SpeaksOfTheGroup) {
    const ProcessGroup tower = testing::app("Tower", 1);
    EXPECT_EQ(title(FixID::quitApp, &tower), "Quit Tower");
    EXPECT_EQ(title(FixID::quitApp, nullptr), "Quit app");
    EXPECT_EQ(title(FixID::restartMac, &tower), "Restart…");
}

} // namespace
} // namespace pacelet
