#include "tests/PaceletApp/Support/ApplicationRig.h"

#include <QAccessible>

#include <map>
#include <set>

namespace pacelet::testing {
namespace {

/// Walks through the window without looking at it, or without a pointer.
class WalkTest : public ApplicationRig {
protected:
    /// Everything below `item` that can be reached by the keyboard.
    static void collect(QQuickItem& item, std::vector<QQuickItem*>& found) {
        if (!item.isVisible() || !item.isEnabled()) {
            return;
        }
        if (item.activeFocusOnTab()) {
            found.push_back(&item);
        }
        for (QQuickItem* const child : item.childItems()) {
            collect(*child, found);
        }
    }

    /// What a screen reader says of the item; empty where it would be silent.
    static std::string spoken(QQuickItem& item) {
        QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(&item);
        if (face == nullptr || face->role() == QAccessible::NoRole ||
            face->role() == QAccessible::Client) {
            return {};
        }
        return face->text(QAccessible::Name).toStdString();
    }

    static std::string whereabouts(const QQuickItem& item) {
        return item.metaObject()->className() + std::string{" at "} +
               std::to_string(item.mapToScene({}).x()) + "," +
               std::to_string(item.mapToScene({}).y());
    }

    void expectAllSpoken(QQuickWindow& window) {
        std::vector<QQuickItem*> items;
        collect(*window.contentItem(), items);
        EXPECT_FALSE(items.empty());
        for (QQuickItem* const item : items) {
            EXPECT_NE(spoken(*item), "") << whereabouts(*item);
        }
    }

    /// Of the ways to the screens, the one to that on show says so.
    void expectOneSelected(QQuickWindow& window, std::string_view title) {
        std::vector<QQuickItem*> items;
        collect(*window.contentItem(), items);
        std::vector<std::string> selected;
        for (QQuickItem* const item : items) {
            if (QAccessible::queryAccessibleInterface(item)->state().selected) {
                selected.push_back(spoken(*item));
            }
        }
        EXPECT_THAT(selected, ElementsAre(StartsWith(std::string{title})));
    }

    /// The spoken names that the Tab key leads to, a way forward and a way back.
    std::set<std::string> tabbed() {
        std::set<std::string> names;
        for (const int key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            for (int press = 0; press < 40; ++press) {
                probe->press(key);
                if (QQuickItem* const item = app().window()->activeFocusItem()) {
                    names.insert(spoken(*item));
                }
            }
        }
        return names;
    }
};

TEST_F(WalkTest, EverythingThatActsHasANameAndCanBeReachedByTheKeyboard) {
    const std::map<Screen, std::vector<std::string>> expected{
        {Screen::overview, {"Pause", "All processes", "Review tabs"}},
        {Screen::processes, {"Pause", "Sort", "Quit Google Chrome"}},
        {Screen::backgroundItems, {"Menu"}},
        {Screen::internet, {"Run speed test"}},
        {Screen::usage, {"Menu"}},
    };
    launch("chrome-tabs");
    for (const ScreenRow& screen : screens) {
        SCOPED_TRACE(screen.title);
        open(screen.value);
        pass(30);
        expectAllSpoken(*app().window());
        expectOneSelected(*app().window(), screen.title);
        const auto names = tabbed();
        EXPECT_THAT(names, IsSupersetOf(expected.at(screen.value)));
        for (const ScreenRow& each : screens) {
            EXPECT_THAT(names, Contains(StartsWith(std::string{each.title})));
        }
    }
}

TEST_F(WalkTest, LeavingAScreenLeavesNothingRunning) {
    launch("chrome-tabs");
    open(Screen::overview);
    pass(30);
    const auto sleeps = scheduler().pendingSleeps();
    for (const ScreenRow& screen : screens) {
        SCOPED_TRACE(screen.title);
        app().router().setScreen(screen.value);
        pass(5);
        app().router().setScreen(Screen::overview);
        pass(1);
        EXPECT_EQ(scheduler().pendingSleeps(), sleeps);
    }
    const auto sampled = calls("/usr/bin/nettop");
    pass(30);
    EXPECT_EQ(calls("/usr/bin/nettop"), sampled);
    EXPECT_EQ(scheduler().pendingJobs(), 0U);
}

} // namespace
} // namespace pacelet::testing
