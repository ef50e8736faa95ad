#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Core/Knowledge/ProcessCatalog.h"
#include "Core/Platform/ProcessSample.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <utility>

namespace pacelet {
namespace {

/// The catalog that ships with the program.
const ProcessCatalog& shipped() {
    static const ProcessCatalog catalog{CatalogFile::read(PACELET_RESOURCES "/processes.json")};
    return catalog;
}

bool readsLikeSentences(const std::string& text) {
    return text.size() > 10 && (text.ends_with('.') || text.ends_with('?')) &&
           text.find("  ") == std::string::npos && text.find('!') == std::string::npos &&
           text.find('\n') == std::string::npos && std::isspace(text.front()) == 0;
}

TEST(BundledCatalog, IsRichAndFreeOfRepetition) {
    EXPECT_GE(shipped().entries.size(), 200U);
    std::set<std::string> ids;
    std::set<std::string> summaries;
    for (const CatalogEntry& entry : shipped().entries) {
        EXPECT_TRUE(ids.insert(entry.id).second) << entry.id;
        EXPECT_TRUE(summaries.insert(entry.summary).second) << entry.id;
    }
    for (const OperatingSystemRow& system : operatingSystems) {
        std::set<std::string> names;
        const ProcessCatalog catalog = shipped().on(system.value);
        for (const CatalogEntry& entry : catalog.entries) {
            for (const std::string& name : entry.match.names) {
                EXPECT_FALSE(name.empty()) << entry.id;
                EXPECT_TRUE(names.insert(name).second) << name << " in " << entry.id;
            }
        }
    }
}

TEST(BundledCatalog, EveryEntryIsWhole) {
    for (const CatalogEntry& entry : shipped().entries) {
        SCOPED_TRACE(entry.id);
        const auto& [names, pathPrefixes, labels] = entry.match;
        EXPECT_FALSE(names.empty() && pathPrefixes.empty() && labels.empty()) << "claims nothing";
        EXPECT_FALSE(entry.title.empty() || entry.title.ends_with('.'));
        EXPECT_TRUE(readsLikeSentences(entry.summary));
        EXPECT_TRUE(readsLikeSentences(entry.whyHigh));
        EXPECT_FALSE(entry.idleNote && (entry.idleNote->empty() || entry.idleNote->ends_with('.')));
        EXPECT_TRUE(entry.symbol && !entry.symbol->empty());
        EXPECT_TRUE(!entry.guide.empty() &&
                    std::ranges::all_of(entry.guide, [](unsigned char character) {
                        return std::islower(character) != 0 || std::isdigit(character) != 0 ||
                               character == '-';
                    }));
        const std::set<FixID> fixes(entry.fixes.begin(), entry.fixes.end());
        EXPECT_EQ(fixes.size(), entry.fixes.size()) << "a fix twice";
        const bool offersQuit = fixes.contains(FixID::quitApp);
        EXPECT_TRUE(entry.verdict != Verdict::safe || offersQuit);
        EXPECT_TRUE(entry.verdict != Verdict::leave || !offersQuit);
    }
}

/// A claim behind a broader one of the same kind can never match.
TEST(BundledCatalog, EveryPrefixFindsItsEntry) {
    for (const CatalogEntry& entry : shipped().entries) {
        for (const std::string& prefix : entry.match.pathPrefixes) {
            EXPECT_EQ(shipped().explain("", prefix, {}).entryID, entry.id) << prefix;
        }
        for (const std::string& label : entry.match.launchdLabels) {
            EXPECT_EQ(shipped().explainLabel(label, {}).entryID, entry.id) << label;
        }
    }
    EXPECT_TRUE(shipped().explain("", "", {}).isFallback);
    EXPECT_TRUE(shipped().explainLabel("", {}).isFallback);
}

TEST(BundledCatalog, KnowsWhatTheRulesDependOn) {
    const auto expectLeave = [](std::string_view name) {
        const Explanation explanation = shipped().explain(name, "", {});
        EXPECT_FALSE(explanation.isFallback) << name;
        EXPECT_EQ(explanation.verdict, Verdict::leave) << name;
    };
    std::ranges::for_each(Diagnosis::spotlightFamily, expectLeave);
    std::ranges::for_each(Diagnosis::photosFamily, expectLeave);
    expectLeave("WindowServer");
    expectLeave("kernel_task");
    EXPECT_FALSE(shipped().explain("-zsh", "-zsh", {}).isFallback) << "a shell of a login";
    const auto machine = shipped().explain("com.apple.Virtualization.VirtualMachine",
                                           std::string{Diagnosis::virtualizationPrefix} + "x", {});
    EXPECT_FALSE(machine.isFallback);
    for (const char* browser :
         {"Google Chrome", "chrome", "chromium", "brave", "msedge", "opera"}) {
        const auto fixes = shipped().explain(browser, "", {}).fixes;
        EXPECT_NE(std::ranges::find(fixes, FixID::reviewTabs), fixes.end()) << browser;
    }
}

/// The lists are of programs that were not chosen for what the catalog knows.
TEST(BundledCatalog, KnowsNearlyAllThatRuns) {
    constexpr std::size_t percent = 95;
    for (const auto& [file, system] :
         {std::pair{"mac-system.txt", OperatingSystem::macOS},
          std::pair{"debian-desktops.txt", OperatingSystem::linuxDesktop}}) {
        const ProcessCatalog catalog = shipped().on(system);
        std::ifstream list{std::string{PACELET_FIXTURES "/names/"} + file};
        std::size_t total = 0;
        std::string unknown;
        std::size_t known = 0;
        for (std::string path; std::getline(list, path);) {
            if (path.starts_with('#')) {
                continue;
            }
            ++total;
            const bool isKnown = !catalog.explain(executableName(path), path, {}).isFallback;
            known += isKnown ? 1 : 0;
            unknown += isKnown ? "" : path + '\n';
        }
        EXPECT_GT(total, 300U) << file;
        EXPECT_GE(known * 100, total * percent) << unknown;
    }
}

TEST(BundledCatalog, LeavesThePartsOfADesktopAlone) {
    const ProcessCatalog catalog = shipped().on(OperatingSystem::linuxDesktop);
    for (const char* const name :
         {"tint2", "plank", "lxpanel", "xfce4-panel", "waybar", "polybar", "caja", "nemo-desktop",
          "pcmanfm", "pcmanfm-qt", "latte-dock", "lxqt-panel", "mate-panel", "plasmashell",
          "gnome-shell", "openbox", "xfdesktop", "watchdogd"}) {
        const Explanation found = catalog.explain(name, "", name);
        EXPECT_EQ(found.verdict, Verdict::leave) << name;
        EXPECT_EQ(found.summary.find("macOS"), std::string::npos) << name;
    }
}

} // namespace
} // namespace pacelet
