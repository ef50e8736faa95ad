#include "Core/Knowledge/LocalExplanation.h"

#include "Core/Knowledge/ProcessCatalog.h"
#include "tests/Support/Processes.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>
#include <map>

namespace pacelet {
namespace {

/// What a machine might tell of a program, by the column's name.
ProgramFacts factsFrom(const std::string& role, const std::string& entry, const std::string& unit,
                       const std::string& package, const std::string& manual) {
    static const std::map<std::string, ProgramRole> roles{
        {"kernel", ProgramRole::kernel},   {"system", ProgramRole::system},
        {"session", ProgramRole::session}, {"application", ProgramRole::application},
        {"program", ProgramRole::program},
    };
    const auto halves = [](const std::string& text) {
        const std::size_t colon = text.find(": ");
        return colon == std::string::npos
                   ? std::pair<std::string, std::string>{}
                   : std::pair{text.substr(0, colon), text.substr(colon + 2)};
    };
    ProgramFacts facts;
    facts.role = roles.at(role);
    std::tie(facts.entryKind, facts.entryComment) = halves(entry);
    std::tie(facts.unit, facts.unitDescription) = halves(unit);
    std::tie(facts.package, facts.packageDescription) = halves(package);
    facts.manualLine = manual;
    return facts;
}

TEST(LocalExplanation, TellsWhatTheMachineKnowsAndFromWhere) {
    const ProcessCatalog catalog = ProcessCatalog{}.on(OperatingSystem::linuxDesktop);
    for (const auto& [name, role, entry, unit, package, manual, title, summary, verdict] :
         testing::rows<9>("Knowledge", "explanations by the machine itself")) {
        SCOPED_TRACE(name);
        const bool isApp = role == "application";
        ProcessGroup group =
            isApp ? testing::app(name, 1) : testing::lone(1, "/usr/bin/" + name, 1);
        group.facts =
            std::make_shared<const ProgramFacts>(factsFrom(role, entry, unit, package, manual));
        const Explanation found = catalog.explain(group);
        EXPECT_EQ(found.title, title);
        EXPECT_EQ(found.summary, summary);
        EXPECT_EQ(rawValue(found.verdict), verdict);
        EXPECT_EQ(found.fixes, isApp ? std::vector{FixID::quitApp} : std::vector<FixID>{});
        EXPECT_TRUE(found.isFallback);
    }
    const ProgramFacts helper{.manualLine = "helps"};
    EXPECT_EQ(LocalExplanation::make(helper, "x", "Tower")->verdict, Verdict::review);
    const ProgramFacts alone{.role = ProgramRole::application, .manualLine = "helps"};
    EXPECT_EQ(LocalExplanation::make(alone, "x", {})->verdict, Verdict::review) << "what to quit?";
}

TEST(ProcessCatalog, BelievesItsEntriesBeforeWhatAnItemSaysOfItself) {
    const ProcessCatalog catalog{{{"id", {{}, {"/opt/known"}, {"com.known"}}, "Known"}}};
    BackgroundItem item{.label = "com.known.agent", .facts = ProgramFacts{.entryKind = "Test"}};
    EXPECT_EQ(catalog.explain(item).title, "Known");
    item.label = "other.service";
    EXPECT_EQ(catalog.explain(item).title, "Test");
    item.program = "/opt/known";
    EXPECT_EQ(catalog.explain(item).title, "Known");
    item.facts.reset();
    EXPECT_EQ(catalog.explain(item).title, "Unknown developer");
}

TEST(ProcessCatalog, KeepsTheNamesOfOtherSystemsApart) {
    CatalogEntry mac{"mac", {{"watchdogd"}, {}, {}}, "mac"};
    mac.system = OperatingSystem::macOS;
    CatalogEntry linuxOne{"linux", {{"watchdogd"}, {}, {}}, "linux"};
    linuxOne.system = OperatingSystem::linuxDesktop;
    linuxOne.summary = "It guards your Mac.";
    linuxOne.idleNote = "On every Mac";
    const ProcessCatalog catalog{{mac, linuxOne}};
    EXPECT_EQ(catalog.on(OperatingSystem::macOS).explain("watchdogd", "", {}).title, "mac");
    const Explanation found =
        catalog.on(OperatingSystem::linuxDesktop).explain("watchdogd", "", {});
    EXPECT_EQ(found.summary, "It guards your computer.");
    EXPECT_EQ(found.idleNote, "On every computer");
}

} // namespace
} // namespace pacelet
