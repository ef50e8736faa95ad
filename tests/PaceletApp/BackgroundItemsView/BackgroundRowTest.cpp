#include "PaceletApp/BackgroundItemsView/BackgroundRow.h"

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
    const std::vector<BackgroundItem> items{
        item("z", {}),      item("b", "mail"),         item("a", "Zoom"),
        item("B", "Mail"),  item("b.second", "Älter"), item("C", "mail"),
        item("a", "Alpha"), item("a", "Unknown app"),
    };
    std::string shown;
    for (const ItemGroup& group : grouped(items, byName)) {
        shown += group.name + ":";
        for (const BackgroundItem* const each : group.items) {
            shown += " " + each->label;
        }
        shown += "; ";
    }
    EXPECT_EQ(shown, "Alpha: a; Älter: b.second; Mail: B; mail: C b; Unknown app: a; Zoom: a; "
                     "Unknown developer: z; ");
    EXPECT_TRUE(grouped({}, byName).empty());
}

TEST(ItemGroups, keepTheOrderOfItemsWithOneLabel) {
    std::vector<BackgroundItem> items{item("same", "App"), item("same", "App"), item("a", "App")};
    items[0].source = "second folder";
    const auto groups = grouped(items, byName);
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ(groups[0].items,
              (std::vector<const BackgroundItem*>{&items[2], &items[0], &items[1]}));
}

TEST(BackgroundRows, tellWhatIsKnown) {
    ProcessUsage usage;
    usage.cpuPercent = 12.5;
    usage.memoryBytes = 300 << 20;
    Explanation explanation;
    explanation.title = "Keeps Notes in step";
    explanation.verdict = Verdict::review;
    const struct {
        BackgroundItem item;
        bool explained;
        bool measured;
        const char* row;
    } rows[] = {
        {item("a.b", "Notes", 7), true, true,
         "Keeps Notes in step|a.b|Runs for you|running|13% · 300 MB|review"},
        {item("a.b", "Notes", 7, ItemScope::systemAgent), true, false,
         "Keeps Notes in step|a.b|Runs for all users|running||review"},
        {item("a.b", {}, {}, ItemScope::systemDaemon), false, true, "a.b|a.b|Runs as system|||"},
        {item("a.b", "Notes", {}, ItemScope::appBundled), true, true,
         "Keeps Notes in step|a.b|Built into Notes|||review"},
        {item("a.b", {}, {}, ItemScope::appBundled), false, false, "a.b|a.b|Built into an app|||"},
    };
    for (const auto& each : rows) {
        const BackgroundFacts facts{.explanation =
                                        [&](const BackgroundItem&) {
                                            return each.explained ? std::optional{explanation}
                                                                  : std::nullopt;
                                        },
                                    .usage =
                                        [&](std::int32_t pid) {
                                            EXPECT_EQ(pid, 7);
                                            return each.measured ? &usage : nullptr;
                                        }};
        const std::vector<BackgroundItem> items{each.item};
        const auto shown = backgroundRows(grouped(items, byName), facts);
        ASSERT_EQ(shown.size(), 2U);
        EXPECT_EQ(shown[0].title.toStdString(), each.item.ownerApp.value_or("Unknown developer"));
        EXPECT_EQ(shown[0].appPath, each.item.ownerApp ? "/Applications/Notes.app" : "");
        EXPECT_EQ(shown[0].subtitle, "1");
        EXPECT_TRUE(shown[0].isHead && !shown[1].isHead && shown[1].isFirst && shown[1].isLast);
        EXPECT_EQ(
            QStringList({shown[1].title, shown[1].subtitle, shown[1].scope,
                         shown[1].isRunning ? "running" : "", shown[1].figures, shown[1].verdict})
                .join(u'|'),
            each.row);
    }
}

} // namespace
} // namespace pacelet
