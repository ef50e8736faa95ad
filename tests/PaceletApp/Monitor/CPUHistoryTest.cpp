#include "PaceletApp/Monitor/CPUHistory.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace pacelet {
namespace {

TEST(CPUHistory, HoldsJustThePointsOfTheLastTenMinutesHoweverTheClockJumps) {
    rc::check([](const std::vector<std::int16_t>& steps) {
        CPUHistory history;
        CPUHistory kept;
        double now = 1'800'000'000;
        for (const std::int16_t step : steps) {
            now += step;
            const CPUPoint point{fromUnixTime(now), static_cast<double>(step)};
            addPoint(history, point);
            CPUHistory next;
            for (const CPUPoint& old : kept) {
                if (now - unixTime(old.date) <= 600.0) {
                    next.push_back(old);
                }
            }
            kept = std::move(next);
            kept.push_back(point);
            RC_ASSERT(history == kept);
        }
    });
}

} // namespace
} // namespace pacelet
