#include "PaceletApp/Models/KeyedListModel.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <numeric>

namespace pacelet {
namespace {

struct Row {
    std::string id;
    int value = 0;
    bool hidden = false; ///< part of the item, but of no role

    const std::string& key() const { return id; }
    static std::vector<ListRole<Row>> roles() {
        return {{"name", [](const Row& row) { return QString::fromStdString(row.id); }},
                {"value", [](const Row& row) { return row.value; }}};
    }

    bool operator==(const Row&) const = default;
};

std::vector<Row> rows(std::string_view letters) {
    std::vector<Row> result;
    for (const char letter : letters) {
        result.push_back({std::string(1, letter)});
    }
    return result;
}

/// A model, a mirror that follows its signals alone, and a record of them: "+at:ids", "-at:count",
/// "from:count>to", "~row:roles".
struct Watched {
    KeyedListModel<Row> model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::vector<Row> mirror;
    std::string record;
    int moved = 0;

    Watched() {
        using Model = QAbstractItemModel;
        QObject::connect(&model, &Model::rowsInserted, &model, [this](auto&, int first, int last) {
            record += "+" + std::to_string(first) + ":";
            for (int row = first; row <= last; ++row) {
                mirror.insert(mirror.begin() + row, model.item(row));
                record += model.item(row).id;
            }
            record += ' ';
        });
        QObject::connect(&model, &Model::rowsRemoved, &model, [this](auto&, int first, int last) {
            mirror.erase(mirror.begin() + first, mirror.begin() + last + 1);
            record += "-" + std::to_string(first) + ":" + std::to_string(last - first + 1) + ' ';
        });
        QObject::connect(
            &model, &Model::rowsMoved, &model, [this](auto&, int first, int last, auto&, int to) {
                const std::vector<Row> taken(mirror.begin() + first, mirror.begin() + last + 1);
                const int count = last - first + 1;
                mirror.erase(mirror.begin() + first, mirror.begin() + last + 1);
                mirror.insert(mirror.begin() + (to > first ? to - count : to), taken.begin(),
                              taken.end());
                moved += count;
                record += std::to_string(first) + ":" + std::to_string(count) + ">" +
                          std::to_string(to) + ' ';
            });
        QObject::connect(
            &model, &Model::dataChanged, &model,
            [this](const QModelIndex& from, const QModelIndex& to, const QList<int>& roles) {
                record += "~" + std::to_string(from.row()) + ":";
                for (int row = from.row(); row <= to.row(); ++row) {
                    mirror[static_cast<std::size_t>(row)] = model.item(row);
                }
                for (const int role : roles) {
                    record += model.roleNames().value(role).toStdString();
                }
                record += ' ';
            });
        QObject::connect(&model, &Model::modelReset, &model, [this] { record += "reset "; });
    }

    std::string update(std::vector<Row> next) {
        record.clear();
        moved = 0;
        model.update(std::move(next));
        return record;
    }
};

TEST(KeyedListModel, tellsTheFewestSteps) {
    const Table<std::string_view, std::string_view, std::string_view> cases = {
        {"", "abc", "+0:abc "},
        {"abc", "abc", ""},
        {"abcdef", "ace", "-5:1 -3:1 -1:1 "},
        {"ad", "abcde", "+1:bc +4:e "},
        {"abcd", "dabc", "3:1>0 "},
        {"abcdef", "efabcd", "4:2>0 "},
        {"abc", "cba", "1:1>3 0:1>3 "},
        {"abcd", "dxa", "-1:2 +2:x 0:1>3 "},
        // Several rows of one key: the first goes with the first.
        {"aab", "aba", "1:1>3 "},
        {"ab", "aab", "+1:a "},
    };
    for (const auto& [before, after, steps] : cases) {
        Watched watched;
        watched.update(rows(before));
        EXPECT_EQ(watched.update(rows(after)), steps) << before << " to " << after;
        EXPECT_EQ(watched.mirror, rows(after));
    }
}

TEST(KeyedListModel, namesOnlyTheRolesThatChanged) {
    Watched watched;
    watched.update({{"a", 1}, {"b", 2}, {"c", 3}});
    EXPECT_EQ(watched.update({{"a", 1}, {"b", 20}, {"c", 3}}), "~1:value ");
    EXPECT_EQ(watched.update({{"a", 1}, {"b", 20, true}, {"c", 3}}), "");
    EXPECT_TRUE(watched.model.item(1).hidden);
    EXPECT_EQ(watched.update({{"c", 30}, {"a", 1}, {"b", 20, true}}), "2:1>0 ~0:value ");
    const QModelIndex first = watched.model.index(0);
    EXPECT_EQ(first.data(Qt::UserRole + 2), 30);
    EXPECT_FALSE(first.data(Qt::DisplayRole).isValid());
    EXPECT_FALSE(first.data(Qt::UserRole + 3).isValid());
}

std::size_t longestRise(const std::vector<std::size_t>& values) {
    std::vector<std::size_t> best(values.size(), 1);
    std::size_t longest = 0;
    for (std::size_t at = 0; at < values.size(); ++at) {
        for (std::size_t before = 0; before < at; ++before) {
            if (values[before] < values[at]) {
                best[at] = std::max(best[at], best[before] + 1);
            }
        }
        longest = std::max(longest, best[at]);
    }
    return longest;
}

RC_GTEST_PROP(KeyedListModel, followsAnyChange, ()) {
    const auto someRows = rc::gen::container<std::vector<Row>>(rc::gen::map(
        rc::gen::pair(rc::gen::inRange(0, 12), rc::gen::inRange(0, 3)), [](const auto& pair) {
            return Row{std::string(1, static_cast<char>('a' + pair.first)), pair.second};
        }));
    Watched watched;
    for (int step = 0; step < 4; ++step) {
        const auto next = *someRows;
        watched.update(next);
        RC_ASSERT(watched.mirror == next);
        RC_ASSERT(watched.record.find("reset") == std::string::npos);
    }
}

RC_GTEST_PROP(KeyedListModel, movesNoMoreThanItMust, ()) {
    const auto count = *rc::gen::inRange<std::size_t>(1, 30);
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    // Sorting by random keys is a random order.
    const auto keys = *rc::gen::container<std::vector<int>>(count, rc::gen::arbitrary<int>());
    std::ranges::stable_sort(order, {}, [&](std::size_t place) { return keys[place]; });
    std::vector<Row> before;
    std::vector<Row> after;
    for (std::size_t place = 0; place < count; ++place) {
        before.push_back({std::to_string(place)});
        after.push_back({std::to_string(order[place])});
    }
    Watched watched;
    watched.update(before);
    watched.update(after);
    RC_ASSERT(watched.mirror == after);
    RC_ASSERT(static_cast<std::size_t>(watched.moved) == count - longestRise(order));
}

} // namespace
} // namespace pacelet
