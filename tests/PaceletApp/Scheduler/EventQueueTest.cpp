#include "PaceletApp/Scheduler/EventQueue.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <numeric>
#include <vector>

namespace pacelet {
namespace {

MonotonicTime at(double seconds) {
    return MonotonicTime{Seconds{seconds}};
}

TEST(EventQueue, RunsWhatIsDueInOrderAndKeepsTheOrderOfArrivalOfOneMoment) {
    rc::check([] {
        const auto dues = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 6));
        const int now = *rc::gen::inRange(-1, 7);
        std::vector<std::size_t> order(dues.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::ranges::stable_sort(order, {}, [&](std::size_t index) { return dues[index]; });
        std::erase_if(order, [&](std::size_t index) { return dues[index] > now; });

        EventQueue queue;
        std::vector<std::size_t> ran;
        for (std::size_t index = 0; index < dues.size(); ++index) {
            queue.add(at(dues[index]), [&ran, index] { ran.push_back(index); });
        }
        queue.runDue(at(now));
        RC_ASSERT(ran == order);
        RC_ASSERT(queue.size() == dues.size() - ran.size());
        RC_ASSERT(!queue.nextDue() || *queue.nextDue() > at(now));
    });
}

TEST(EventQueue, LeavesWhatIsAddedWhileItRunsToTheNextCall) {
    EventQueue queue;
    std::vector<int> ran;
    queue.add(at(2), [&] {
        ran.push_back(1);
        queue.add(at(1), [&] { ran.push_back(3); });
        queue.add(at(2), [&] { ran.push_back(4); });
    });
    queue.add(at(2), [&] { ran.push_back(2); });
    queue.runDue(at(2));
    EXPECT_EQ(ran, (std::vector{1, 2}));
    queue.runDue(at(2));
    EXPECT_EQ(ran, (std::vector{1, 2, 3, 4}));
}

TEST(EventQueue, AMovedEventGoesBehindWhatIsDueThen) {
    EventQueue queue;
    std::vector<int> ran;
    const EventQueue::Ticket late = queue.add(at(30), [&] { ran.push_back(30); });
    queue.add(at(1), [&] { ran.push_back(1); });
    queue.move(late, at(1));
    queue.runDue(at(1));
    EXPECT_EQ(ran, (std::vector{1, 30}));
    EXPECT_EQ(queue.size(), 0U);
}

} // namespace
} // namespace pacelet
