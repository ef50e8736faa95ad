#include "tests/PaceletApp/Monitor/MonitorRig.h"

#include <map>
#include <random>

namespace pacelet::testing {
namespace {

/// A cause that the simulation was told to have, and for how long.
struct Truth {
    Cause cause;
    TimePoint begin;
    TimePoint end;
};

/// Thirty days of a machine of which it is known what slows it down, and when.
class MonitorJournal : public MonitorRig, public ::testing::WithParamInterface<std::uint64_t> {
protected:
    int below(int count) { return std::uniform_int_distribution<int>{0, count - 1}(random_); }

    void cause(int which, bool on) {
        if (which == 0) {
            setLoad("agent", on ? 200 : 1);
        } else if (which == 1) {
            setLoad("mds_stores", on ? 250 : 5);
        } else {
            const auto world = mac.machine.lock();
            world->vitals.thermalState = which == 2 && on ? 2 : 0;
            world->vitals.pressureLevel = which == 3 && on ? 2 : 1;
        }
    }

    static std::int64_t minuteOf(TimePoint time) {
        return static_cast<std::int64_t>(unixTime(time) / 60);
    }

    /// The open minute goes: that of the last look, and what has passed since.
    void startAnew() {
        if (!monitor->cpuHistory().empty()) {
            openSeconds_[minuteOf(monitor->cpuHistory().back().date)] = 60;
        }
        openSeconds_[minuteOf(scheduler.now())] = std::fmod(unixTime(scheduler.now()), 60);
        make();
        monitor->start();
    }

    void haveACause() {
        static const Cause causes[] = {{FindingKind::cpuHog, "", "agent"},
                                       {FindingKind::spotlight, "", ""},
                                       {FindingKind::heat, "", ""},
                                       {FindingKind::memory, notes, "Notes"}};
        const int which = below(4);
        const TimePoint begin = scheduler.now();
        cause(which, true);
        for (int part = 1 + below(4); part > 0; --part) {
            monitor->setWindowVisible(below(3) == 0);
            advance(600 + below(3000));
            if (below(6) == 0) {
                startAnew();
            }
        }
        cause(which, false);
        truths_.push_back({causes[which], begin, scheduler.now()});
    }

    void beQuiet() {
        monitor->setWindowVisible(below(3) == 0);
        advance(600 + below(1800));
        const int what = below(6);
        if (what == 0) {
            sleepMachine(below(20000));
        } else if (what == 1) {
            startAnew();
        }
        advance(below(600));
    }

    /// Of these minutes the journal must hold all but what was still open when the program ended.
    void expectWhole(const CauseJournal& journal, std::int64_t first, std::int64_t end) {
        std::map<std::int64_t, double> noted;
        for (const auto& entry : journal.between(first, end)) {
            noted[entry.t] += static_cast<double>(entry.seconds);
        }
        for (std::int64_t minute = first; minute < end; ++minute) {
            const auto cut = openSeconds_.find(minute);
            const double lost = cut == openSeconds_.end() ? 0 : cut->second;
            EXPECT_NEAR(noted[minute], 60 - lost, 0.1) << minute;
        }
    }

    std::mt19937_64 random_;
    std::vector<Truth> truths_;
    std::map<std::int64_t, double> openSeconds_; ///< by the minute in which a run of it ended
};

TEST_P(MonitorJournal, TellsTheTimesOfTheTrueCauses) {
    random_.seed(GetParam());
    startUp();
    const TimePoint begin = scheduler.now();
    while (scheduler.now() - begin < Seconds{30 * 86400.0}) {
        haveACause();
        beQuiet();
    }
    const CauseJournal journal = monitor->causeStore().load(distantPast);
    std::size_t entries = 0;
    for (const auto& [cause, from, to] : truths_) {
        const double slack = 60 + 0.03 * (to - from).count();
        double first = 0;
        double last = 0;
        double stood = 0;
        for (const auto& entry : journal.between(minuteOf(from) - 4, minuteOf(to) + 5)) {
            EXPECT_EQ(journal.causes()[entry.cause], cause);
            const double start = static_cast<double>(entry.t) * 60;
            first = first == 0 ? start + 60 - entry.seconds : first;
            last = start + entry.seconds;
            stood += entry.seconds;
            ++entries;
        }
        EXPECT_NEAR(first, unixTime(from), slack);
        EXPECT_NEAR(last, unixTime(to), slack);
        double lost = 0;
        for (auto cut = openSeconds_.lower_bound(minuteOf(from));
             cut != openSeconds_.end() && cut->first <= minuteOf(to); ++cut) {
            lost += cut->second;
        }
        EXPECT_NEAR(stood, (to - from).count(), slack + lost);
        expectWhole(journal, minuteOf(from) + 2, minuteOf(to) - 1);
    }
    EXPECT_EQ(entries, journal.entries().size()) << "and there is nothing else";
    EXPECT_GT(truths_.size(), 200U);
    std::int64_t spells = 0;
    for (const CauseSummary& each : journal.summary(0, std::int64_t{1} << 40)) {
        spells += each.spells;
    }
    EXPECT_EQ(spells, static_cast<std::int64_t>(truths_.size()));
}

INSTANTIATE_TEST_SUITE_P(Seeds, MonitorJournal, ::testing::Values(16, 20260306));

} // namespace
} // namespace pacelet::testing
