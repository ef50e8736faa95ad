#include "PaceletApp/BackgroundItemsView/BackgroundRow.h"
#include "tests/PaceletApp/Support/SampleGroup.h"
#include "tests/PaceletApp/Support/Table.h"

#include <gtest/gtest.h>

#include <QCollator>

namespace pacelet {
namespace {

BackgroundItem item(std::string label, std::optional<std::string> owner,
                    std::optional<std::int32_t> pid = {}, ItemScope scope = ItemScope::userAgent) {
    BackgroundItem made;
    made.label = std::move(label);
    made.source = "/Library/" + made.label;
    made.ownerApp = std::move(owner);
    made.pid = pid;
    made.scope = scope;
    return made;
}

bool byName(const std::string& left, const std::string& right) {
    QCollator collator{QLocale{QLocale::German, QLocale::Germany}};
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator.compare(QString::fromStdString(left), QString::fromStdString(right)) < 0;
}

TEST(ItemGroups, goByTheNamesOfOwnersTheUnknownLast) {
    std::vector<BackgroundItem> items{
        item("z", {}),      item("b", "mail"),        item("a", "Zoom"),
        item("B", "Mail"),  item("b.2", "Älter"),     item("C", "mail"),
        item("a", "Alpha"), item("a", "Unknown app"), item("a", "Zoom")};
    items.back().source = "another folder"; // items of one label stand as they came
    std::string shown;
    for (const ItemGroup& group : grouped(items, byName)) {
        shown += group.name + ":";
        for (const BackgroundItem* const each : group.items) {
            shown += " " + each->label + (each == &items.back() ? "'" : "");
        }
        shown += "; ";
    }
    EXPECT_EQ(shown, "Alpha: a; Älter: b.2; Mail: B; mail: C b; Unknown app: a; Zoom: a a'; "
                     "Unknown developer: z; ");
    EXPECT_TRUE(grouped({}, byName).empty());
}

TEST(BackgroundRows, tellWhatIsKnown) {
    const ProcessUsage usage = sampleUsage(7, "", 12.5, 300 << 20);
    Explanation explanation;
    explanation.title = "Keeps Notes in step";
    explanation.verdict = Verdict::review;
    using Scope = ItemScope;
    const char* const known = "Keeps Notes in step";
    const Table<BackgroundItem, bool, bool, std::string> rows = {
        {item("a.b", "Notes", 7), true, true, "|a.b|Runs for you|running|13% · 300 MB|review"},
        {item("a.b", "Notes", 7, Scope::systemAgent), true, false,
         "|a.b|Runs for all users|running||review"},
        {item("a.b", {}, {}, Scope::systemDaemon), false, true, "|a.b|Runs as system|||"},
        {item("a.b", "Notes", {}, Scope::appBundled), true, true, "|a.b|Built into Notes|||review"},
        {item("a.b", {}, {}, Scope::appBundled), false, false, "|a.b|Built into an app|||"},
    };
    for (const auto& each : rows) {
        const auto& [given, explained, measured, words] = each;
        BackgroundFacts facts;
        facts.explanation = [&, is = explained](const BackgroundItem&) {
            return is ? std::optional{explanation} : std::nullopt;
        };
        facts.usage = [&, is = measured](std::int32_t pid) {
            EXPECT_EQ(pid, 7);
            return is ? &usage : nullptr;
        };
        const std::vector<BackgroundItem> items{given};
        const auto shown = backgroundRows(grouped(items, byName), facts);
        ASSERT_EQ(shown.size(), 2U);
        EXPECT_EQ(shown[0].title.toStdString(), given.ownerApp.value_or("Unknown developer"));
        EXPECT_EQ(shown[0].appPath, given.ownerApp ? "/Applications/Notes.app" : "");
        EXPECT_EQ(shown[0].subtitle, "1");
        EXPECT_TRUE(shown[0].isHead && !shown[1].isHead && shown[1].isFirst && shown[1].isLast);
        const QStringList texts{shown[1].title,   shown[1].subtitle,
                                shown[1].scope,   shown[1].isRunning ? "running" : "",
                                shown[1].figures, shown[1].verdict};
        EXPECT_EQ(texts.join(u'|').toStdString(), (explained ? known : "a.b") + words);
    }
}

} // namespace
} // namespace pacelet
