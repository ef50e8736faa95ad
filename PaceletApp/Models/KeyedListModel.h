#pragma once

#include "PaceletApp/Models/ListMoves.h"

#include <QAbstractListModel>

#include <algorithm>
#include <concepts>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace pacelet {

/// One role of a list for QML: its name, and how its value is read from an item.
template<typename Item>
struct ListRole {
    QByteArray name;
    std::function<QVariant(const Item&)> value;
};

/// An item that says its own key, and the roles that QML knows of it.
template<typename Item>
concept ListItem = std::equality_comparable<Item> && requires(const Item& item) {
    { item.key() } -> std::convertible_to<std::string>;
    { Item::roles() } -> std::same_as<std::vector<ListRole<Item>>>;
};

/// What all lists have in common.
class KeyedList : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    /// How often the list was told its content.
    std::size_t updates() const { return updates_; }

protected:
    void countUpdate() { ++updates_; }

private:
    std::size_t updates_ = 0;
};

/// A list for QML that is told its new content whole and tells its views only what changed: rows
/// that went, moved or came, and roles whose value is another. Never resets, so that a view keeps
/// its place, its open row and its hover.
///
/// Items compare with `==`; the key says which item of the old list is which of the new. Where
/// several share a key, the first goes with the first, the second with the second.
template<ListItem Item>
class KeyedListModel : public KeyedList {
public:
    using KeyedList::KeyedList;

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : asRow(rows_.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const auto number = static_cast<std::size_t>(role - firstRole);
        if (!checkIndex(index, CheckIndexOption::IndexIsValid) || number >= roles_.size()) {
            return {};
        }
        return roles_[number].value(item(index.row()));
    }

    QHash<int, QByteArray> roleNames() const override {
        QHash<int, QByteArray> names;
        int role = firstRole;
        for (const ListRole<Item>& each : roles_) {
            names.insert(role++, each.name);
        }
        return names;
    }

    const Item& item(int row) const { return *rows_[static_cast<std::size_t>(row)]; }

    /// Gives the row another value, under the same key.
    void replace(int row, Item next) {
        Item& old = *rows_[static_cast<std::size_t>(row)];
        if (old == next) {
            return;
        }
        QList<int> changed;
        int role = firstRole;
        for (const ListRole<Item>& each : roles_) {
            if (each.value(old) != each.value(next)) {
                changed.append(role);
            }
            ++role;
        }
        old = std::move(next);
        if (!changed.isEmpty()) {
            const QModelIndex at = index(row);
            Q_EMIT dataChanged(at, at, changed);
        }
    }

    /// Makes the list hold `next`.
    void update(std::vector<Item> next) {
        countUpdate();
        Places places = placesIn(next);
        removeGone(places);
        arrange(places, next);
        adopt(next);
    }

private:
    static constexpr int firstRole = Qt::UserRole + 1;
    static constexpr std::size_t gone = static_cast<std::size_t>(-1);

    /// For each row where its item stands in the new list, or `gone`.
    using Places = std::vector<std::size_t>;

    static int asRow(std::size_t place) { return static_cast<int>(place); }

    Places placesIn(const std::vector<Item>& next) const {
        // Chains the places that share a key, the first at the head.
        std::unordered_map<std::string, std::size_t> heads;
        heads.reserve(next.size());
        std::vector<std::size_t> following(next.size(), gone);
        for (std::size_t place = next.size(); place-- > 0;) {
            const auto [head, isNew] = heads.try_emplace(next[place].key(), place);
            if (!isNew) {
                following[place] = std::exchange(head->second, place);
            }
        }
        Places places(rows_.size(), gone);
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            const auto head = heads.find(rows_[row]->key());
            if (head != heads.end() && head->second != gone) {
                places[row] = std::exchange(head->second, following[head->second]);
            }
        }
        return places;
    }

    void removeGone(Places& places) {
        for (std::size_t end = rows_.size(); end > 0;) {
            std::size_t begin = end;
            while (begin > 0 && places[begin - 1] == gone) {
                --begin;
            }
            if (begin == end) {
                --end;
                continue;
            }
            beginRemoveRows({}, asRow(begin), asRow(end - 1));
            eraseRange(rows_, begin, end);
            eraseRange(places, begin, end);
            endRemoveRows();
            end = begin;
        }
    }

    /// Walks the new list from its front. What stands before `row` is as it shall be, but for rows
    /// that are still to be moved away from among it.
    void arrange(Places& places, std::vector<Item>& next) {
        std::vector<bool> staying(next.size(), false);
        std::vector<bool> known(next.size(), false);
        const std::vector<bool> rising = longestRisingPart(places);
        for (std::size_t row = 0; row < places.size(); ++row) {
            known[places[row]] = true;
            staying[places[row]] = rising[row];
        }
        std::size_t row = 0;
        for (std::size_t place = 0; place < next.size();) {
            std::size_t end = place + 1;
            if (!known[place]) {
                while (end < next.size() && !known[end]) {
                    ++end;
                }
                insert(places, next, row, place, end);
                row += end - place;
            } else if (staying[place]) {
                while (places[row] != place) {
                    ++row;
                }
                ++row;
            } else {
                const auto found = std::find(places.begin(), places.end(), place);
                const auto from = static_cast<std::size_t>(found - places.begin());
                while (end < next.size() && from + (end - place) < places.size() &&
                       places[from + (end - place)] == end && !staying[end]) {
                    ++end;
                }
                row = move(places, from, end - place, row);
            }
            place = end;
        }
    }

    void insert(Places& places, const std::vector<Item>& next, std::size_t row, std::size_t place,
                std::size_t end) {
        std::vector<std::unique_ptr<Item>> items;
        Places itsPlaces;
        for (std::size_t each = place; each < end; ++each) {
            items.push_back(std::make_unique<Item>(next[each]));
            itsPlaces.push_back(each);
        }
        const auto at = static_cast<std::ptrdiff_t>(row);
        beginInsertRows({}, asRow(row), asRow(row + items.size() - 1));
        rows_.insert(rows_.begin() + at, std::make_move_iterator(items.begin()),
                     std::make_move_iterator(items.end()));
        places.insert(places.begin() + at, itsPlaces.begin(), itsPlaces.end());
        endInsertRows();
    }

    /// Moves `count` rows before `row`; gives the row behind them.
    std::size_t move(Places& places, std::size_t from, std::size_t count, std::size_t row) {
        if (from <= row && row <= from + count) {
            return from + count;
        }
        beginMoveRows({}, asRow(from), asRow(from + count - 1), {}, asRow(row));
        rotate(rows_, from, count, row);
        rotate(places, from, count, row);
        endMoveRows();
        return from < row ? row : row + count;
    }

    /// Takes the new values over, row by row.
    void adopt(std::vector<Item>& next) {
        for (std::size_t row = 0; row < next.size(); ++row) {
            replace(asRow(row), std::move(next[row]));
        }
    }

    template<typename Value>
    static void eraseRange(std::vector<Value>& values, std::size_t begin, std::size_t end) {
        values.erase(values.begin() + static_cast<std::ptrdiff_t>(begin),
                     values.begin() + static_cast<std::ptrdiff_t>(end));
    }

    template<typename Value>
    static void rotate(std::vector<Value>& values, std::size_t from, std::size_t count,
                       std::size_t row) {
        const auto at = [&](std::size_t place) {
            return values.begin() + static_cast<std::ptrdiff_t>(place);
        };
        if (from < row) {
            std::rotate(at(from), at(from + count), at(row));
        } else {
            std::rotate(at(row), at(from), at(from + count));
        }
    }

    const std::vector<ListRole<Item>> roles_ = Item::roles();
    std::vector<std::unique_ptr<Item>> rows_;
};

} // namespace pacelet
