#include "PaceletApp/ProcessesView/ProcessViewport.h"
#include "tests/PaceletApp/ProcessesView/SampleGroups.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>

namespace pacelet {
namespace {

constexpr double rowHeight = 57;

/// A table with a view that scrolls as it is told, and groups "a", "b" … that fall in CPU.
struct Viewed {
    SampleGroups sample;
    ProcessViewport table;
    QAbstractItemModelTester tester{table.rows()};
    double y = 0;
    double height;
    std::optional<std::string> openID;
    double panel = 300;

    explicit Viewed(int count, double viewHeight = 6 * rowHeight)
        : height{viewHeight} {
        QObject::connect(&table, &ProcessViewport::scrolled, &table,
                         [this](double to) { scroll(to); });
        for (int number = 0; number < count; ++number) {
            sample.add(std::string(1, static_cast<char>('a' + number % 26)), 1000 - number);
        }
        tick();
        table.setView(y, height);
    }

    void scroll(double to) {
        y = to;
        table.setView(y, height);
    }

    /// Shows the groups as they are now, and measures the panel of the open row.
    void tick() {
        table.show(visibleEntries(sample.entries(), {}), openID);
        if (openID && row(*openID) >= 0 && roleOf(row(*openID), "open").toBool()) {
            table.setPanelHeight(panel);
        }
    }

    void open(const std::string& id) {
        openID = id;
        tick();
    }

    QVariant roleOf(int row, const char* role) {
        return table.rows()->index(row, 0).data(table.rows()->roleNames().key(role));
    }

    /// The row of the screen that shows this group, or -1.
    int row(const std::string& id) {
        for (int each = 0; each < table.rows()->rowCount(); ++each) {
            if (roleOf(each, "groupId").toString().toStdString() == id) {
                return each;
            }
        }
        return -1;
    }

    /// Where the group stands in the view.
    double placeOf(const std::string& id) { return roleOf(row(id), "place").toDouble() - y; }

    void setCPU(std::size_t group, double cpu) { sample.groups[group].cpuPercent = cpu; }

    std::string current() {
        for (int each = 0; each < table.rows()->rowCount(); ++each) {
            if (roleOf(each, "current").toBool()) {
                return roleOf(each, "groupId").toString().toStdString();
            }
        }
        return {};
    }
};

TEST(ProcessViewport, makesTheRowsInViewAndTurnsThemOver) {
    Viewed viewed{2000};
    EXPECT_EQ(viewed.table.contentHeight(), 2001 * rowHeight);
    viewed.scroll(400 * rowHeight);
    const int rows = viewed.table.rows()->rowCount();
    EXPECT_LE(rows, 14);
    QSignalSpy inserted{viewed.table.rows(), &QAbstractItemModel::rowsInserted};
    QSignalSpy moved{viewed.table.rows(), &QAbstractItemModel::rowsMoved};
    QSignalSpy removed{viewed.table.rows(), &QAbstractItemModel::rowsRemoved};
    const double start = 400 * rowHeight;
    for (int step = 0; start + 31 * step < 500 * rowHeight; ++step) {
        viewed.scroll(start + 31 * step);
    }
    viewed.scroll(1100 * rowHeight);
    std::ranges::reverse(viewed.sample.groups);
    viewed.tick();
    EXPECT_EQ(viewed.y, 1100 * rowHeight);
    EXPECT_LE(inserted.count() + removed.count(), 4);
    EXPECT_GE(moved.count(), 80) << "what leaves at one end comes in at the other";
    EXPECT_EQ(viewed.row("pid:1100") >= 0, true);
}

TEST(ProcessViewport, keepsWhatIsReadInPlace) {
    // The view begins at this row, and this much lower; the CPU of a group changes.
    const Table<const char*, int, double, double, std::size_t, double, double> cases = {
        {"a row above moves below the view", -1, 20, 0, 2, 1, 20},
        {"a row below moves above the view", -1, 20, 9, 60, 5000, 20},
        {"the open row above the view moves", 2, 20, 300, 2, 990.5, 20},
        {"the open row above moves below", 2, 20, 300, 2, 1, 20 - 300 / rowHeight},
        {"the open row below moves above", 60, 20, 0, 60, 5000, 20 + 300 / rowHeight},
        {"the open row at the edge moves away", 19, 20, 0, 19, 950.5, 50},
        {"its panel is at the edge, and it moves", 19, 20, 200, 19, 5000, 1},
        {"the open row in the view moves", 22, 20, 0, 22, 970.5, 20},
        {"the view is at its top", 2, 0, 0, 2, 1, 0},
    };
    for (const auto& [what, open, row, lower, changing, to, rowAfter] : cases) {
        Viewed viewed{100};
        if (open >= 0) {
            viewed.scroll((open + 1) * rowHeight);
            viewed.open("pid:" + std::to_string(open + 1));
        }
        viewed.scroll(row * rowHeight + lower);
        viewed.setCPU(changing, to);
        viewed.tick();
        EXPECT_NEAR(viewed.y, rowAfter * rowHeight + lower, 1e-9) << what;
    }
    Viewed viewed{100};
    viewed.scroll(19 * rowHeight);
    viewed.open("pid:19");
    viewed.scroll(19 * rowHeight + 200);
    viewed.sample.groups.erase(viewed.sample.groups.begin() + 18);
    viewed.tick();
    EXPECT_EQ(viewed.y, 20 * rowHeight) << "the open row at the edge has gone";
    viewed.table.scrollToTop();
    viewed.tick();
    EXPECT_EQ(viewed.y, 0);
}

TEST(ProcessViewport, aPressedRowStaysUnderThePointer) {
    Viewed viewed{100, 8 * rowHeight};
    viewed.scroll(10 * rowHeight);
    viewed.open("pid:11");
    viewed.scroll(11 * rowHeight);
    EXPECT_EQ(viewed.placeOf("pid:13"), 2 * rowHeight + 300);
    viewed.table.hold("pid:13");
    viewed.open("pid:13");
    // The panel does not fit below it, so the view follows as far as it must.
    EXPECT_EQ(viewed.placeOf("pid:13"), 8 * rowHeight - rowHeight - 300);
    viewed.panel = 900;
    viewed.tick();
    viewed.table.hold("pid:13");
    viewed.openID.reset();
    viewed.tick();
    EXPECT_EQ(viewed.placeOf("pid:13"), 8 * rowHeight - rowHeight - 300);
    viewed.table.hold("pid:15");
    viewed.open("pid:15");
    EXPECT_EQ(viewed.placeOf("pid:15"), 0) << "a panel taller than the view begins at its head";
}

TEST(ProcessViewport, bringsTheOpenRowToTheTopOnceSizesAreKnown) {
    Viewed viewed{30, 0};
    viewed.table.show(visibleEntries(viewed.sample.entries(), {}), "pid:28");
    viewed.table.scrollToOpen();
    viewed.height = 400;
    viewed.scroll(0);
    // Near the end of the list there is not enough below it until its panel is there.
    EXPECT_EQ(viewed.y, 31 * rowHeight - 400);
    viewed.table.setPanelHeight(500);
    EXPECT_EQ(viewed.y, 28 * rowHeight);
    viewed.scroll(5);
    viewed.table.setPanelHeight(600);
    EXPECT_EQ(viewed.y, 5) << "whoever scrolls on is left alone";
    viewed.table.scrollToOpen();
    EXPECT_EQ(viewed.y, 28 * rowHeight) << "its panel is known already";
}

TEST(ProcessViewport, theKeyboardKeepsToItsProcess) {
    Viewed viewed{50};
    viewed.table.enter("pid:3", true);
    EXPECT_EQ(viewed.current(), "pid:3");
    viewed.setCPU(2, 1); // to the end of the list, far out of view
    viewed.tick();
    EXPECT_EQ(viewed.current(), "pid:3");
    EXPECT_EQ(viewed.y, 0);
    for (double y = 0; y < 40 * rowHeight; y += 40) {
        viewed.scroll(y);
        EXPECT_EQ(viewed.current(), "pid:3");
    }
    viewed.table.step(-1);
    EXPECT_EQ(viewed.current(), "pid:50");
    EXPECT_EQ(viewed.placeOf("pid:50"), 5 * rowHeight);
    viewed.table.step(-1000);
    EXPECT_EQ(viewed.current() + " " + std::to_string(viewed.y), "kernel_task 0.000000");
    viewed.table.step(viewed.table.rowsInView());
    EXPECT_EQ(viewed.current(), "pid:7");
    EXPECT_EQ((Viewed{5, 10}.table.rowsInView()), 1);

    viewed.sample.groups.erase(viewed.sample.groups.begin() + 6);
    viewed.tick();
    EXPECT_EQ(viewed.current(), "pid:8") << "the row that took its place";
    viewed.table.step(1000);
    EXPECT_EQ(viewed.current(), "pid:3");
    viewed.scroll(40 * rowHeight);
    EXPECT_EQ(viewed.current(), "pid:3");
    viewed.sample.groups.erase(viewed.sample.groups.begin() + 2);
    viewed.tick();
    EXPECT_EQ(viewed.current(), "pid:50") << "the last one is gone";
    viewed.scroll(0);
    EXPECT_EQ(viewed.current(), "pid:50");
    viewed.table.leave("pid:9");
    EXPECT_EQ(viewed.current(), "pid:50");
    viewed.table.leave("pid:50");
    viewed.table.step(1);
    EXPECT_EQ(viewed.current(), "");
    viewed.scroll(2.5 * rowHeight);
    viewed.table.enterTop();
    EXPECT_EQ(viewed.y, 2 * rowHeight);
    viewed.scroll(20 * rowHeight);
    EXPECT_NE(viewed.current(), "") << "far above the view";
    viewed.table.show({}, {});
    EXPECT_EQ(viewed.table.rows()->rowCount(), 0);
}

RC_GTEST_PROP(ProcessViewport, coversTheViewWhateverHappens, ()) {
    Viewed viewed{*rc::gen::inRange(0, 60), static_cast<double>(*rc::gen::inRange(1, 700))};
    for (int step = 0; step < 12; ++step) {
        const auto group = *rc::gen::inRange<std::size_t>(0, 60);
        const std::string id = "pid:" + std::to_string(group + 1);
        switch (*rc::gen::inRange(0, 7)) {
        case 0:
            viewed.scroll(*rc::gen::inRange(
                0, std::max(1, static_cast<int>(viewed.table.contentHeight() - viewed.height))));
            break;
        case 1:
            viewed.table.hold(id);
            viewed.openID = viewed.openID == id ? std::nullopt : std::optional{id};
            break;
        case 2:
            viewed.panel = *rc::gen::inRange(1, 900);
            break;
        case 3:
            viewed.table.enter(QString::fromStdString(id), *rc::gen::arbitrary<bool>());
            break;
        case 4:
            viewed.table.step(*rc::gen::inRange(-9, 9));
            break;
        case 5:
            if (!viewed.sample.groups.empty()) {
                viewed.sample.groups.pop_back();
            }
            break;
        default:
            if (group < viewed.sample.groups.size()) {
                viewed.setCPU(group, *rc::gen::inRange(0, 2000));
            }
        }
        viewed.tick();
        std::set<QString> seen;
        double covered = 0;
        for (int row = 0; row < viewed.table.rows()->rowCount(); ++row) {
            RC_ASSERT(seen.insert(viewed.roleOf(row, "groupId").toString()).second);
            const double top = viewed.roleOf(row, "place").toDouble();
            const double bottom =
                top + rowHeight + (viewed.roleOf(row, "open").toBool() ? viewed.panel : 0);
            covered +=
                std::max(0.0, std::min(bottom, viewed.y + viewed.height) - std::max(top, viewed.y));
        }
        const double content = viewed.table.contentHeight();
        RC_ASSERT(viewed.y >= 0 && viewed.y <= std::max(0.0, content - viewed.height));
        RC_ASSERT(std::abs(covered - std::min(content, viewed.height)) < 0.001);
    }
}

} // namespace
} // namespace pacelet
