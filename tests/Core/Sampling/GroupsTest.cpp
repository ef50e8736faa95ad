#include "Core/Sampling/AppGrouper.h"
#include "Core/Sampling/SafetyGate.h"
#include "Core/Sampling/Smoother.h"
#include "tests/Support/Processes.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <set>
#include <string>
#include <vector>

namespace pacelet {
namespace {

using testing::lone;
using testing::me;
using testing::usage;

TEST(AppGrouper, FindsTheOutermostBundle) {
    const std::vector<std::pair<std::string, std::optional<std::string_view>>> cases{
        {"/Applications/Outer.app/Contents/Inner.app/Contents/MacOS/x", "/Applications/Outer.app"},
        {"/Applications/Foo.app", "/Applications/Foo.app"},
        {"/usr/sbin/cupsd", {}},
        {"/Applications/Foo.application/x", {}},
        {"/Applications/Foo.APP/x", {}},
        {"/a.appx/b.app", "/a.appx/b.app"},
        {"", {}},
    };
    for (const auto& [path, app] : cases) {
        EXPECT_EQ(AppGrouper::outermostApp(path), app) << path;
    }
}

TEST(AppGrouper, FoldsHelpersIntoTheirApplication) {
    const std::string app = "/Applications/My.Fine.App.app";
    const auto groups = AppGrouper::group(
        {usage(1, app + "/Contents/Frameworks/Helper.app/Contents/MacOS/Helper", 30, 100),
         usage(2, "/usr/sbin/cupsd", 5, 7), usage(3, app + "/Contents/MacOS/Main", 1, 50),
         usage(4, "/usr/sbin/cupsd", 5, 8), usage(2, "/usr/sbin/again", 0, 0)},
        me);
    ASSERT_EQ(groups.size(), 3U);
    EXPECT_EQ(groups[0].id, app);
    EXPECT_EQ(groups[0].displayName, "My.Fine.App");
    EXPECT_EQ(groups[0].cpuPercent, 31);
    EXPECT_EQ(groups[0].memoryBytes, 150);
    EXPECT_EQ(groups[0].helperCount(), 1U);
    EXPECT_EQ(groups[0].primary().pid, 3) << "the main executable, not the busier helper";
    EXPECT_TRUE(groups[0].quittable);
    EXPECT_EQ(groups[1].id, "pid:2");
    EXPECT_EQ(groups[2].id, "pid:4") << "one name, two groups, in the order of the table";
    EXPECT_EQ(groups[1].displayName, "cupsd");
    EXPECT_FALSE(groups[1].appPath);
    EXPECT_FALSE(groups[1].quittable);
    EXPECT_TRUE(AppGrouper::group({}, me).empty());
}

TEST(AppGrouper, ChoosesThePrimary) {
    const std::string app = "/Applications/A.app";
    const auto primaryOf = [&](std::vector<ProcessUsage> usages) {
        return AppGrouper::group(std::move(usages), me).front().primary().pid;
    };
    EXPECT_EQ(primaryOf({usage(1, app + "/Contents/Extra/a", 5), usage(2, app + "/Contents/b", 9),
                         usage(3, app + "/Contents/c", 9)}),
              2)
        << "without the main executable the busiest, the earliest on a tie";
    EXPECT_EQ(primaryOf({usage(1, app + "/Contents/MacOS/deeper/x", 5),
                         usage(2, app + "/Contents/MacOS/A", 0)}),
              2);
    EXPECT_EQ(primaryOf({usage(1, app, 1), usage(2, app, 3)}), 2);
    EXPECT_DEATH(ProcessGroup{}.primary(), "no members");
}

TEST(AppGrouper, SortsByLoadThenByPlainText) {
    const auto groups = AppGrouper::group(
        {usage(1, "/x/b", 5), usage(2, "/x/B", 5), usage(3, "/x/a", 9), usage(4, "/x/a", 5)}, me);
    std::string order;
    for (const ProcessGroup& group : groups) {
        order += group.displayName;
    }
    EXPECT_EQ(order, "aBab");
}

TEST(AppGrouper, OffersToQuitOnlyOwnApplications) {
    const auto quittable = [](const std::string& path, std::uint32_t uid) {
        return AppGrouper::group({usage(1, path, 0, 0, uid)}, me).front().quittable;
    };
    EXPECT_TRUE(quittable("/Applications/A.app/Contents/MacOS/A", me));
    EXPECT_FALSE(quittable("/Applications/A.app/Contents/MacOS/A", 0));
    EXPECT_FALSE(quittable("/Applications/Pacelet.app/Contents/MacOS/pacelet", me));
    EXPECT_FALSE(quittable("/System/Applications/A.app/Contents/MacOS/A", me));
}

TEST(AppGrouper, LosesAndInventsNothing) {
    EXPECT_TRUE(rc::check("every process in just one group, sums kept", [] {
        const auto paths =
            *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
                "/A.app/Contents/MacOS/A", "/A.app/x", "/B.app", "/bin/c", "d", "/B.app/E.app/f"));
        std::vector<ProcessUsage> usages;
        double total = 0;
        for (const std::string& path : paths) {
            const auto pid = static_cast<std::int32_t>(usages.size());
            usages.push_back(usage(pid, path, *rc::gen::inRange(0, 500)));
            total += usages.back().cpuPercent;
        }
        std::multiset<std::int32_t> pids;
        double sum = 0;
        double last = 1e9;
        for (const ProcessGroup& group : AppGrouper::group(usages, me)) {
            RC_ASSERT(group.cpuPercent <= last);
            last = group.cpuPercent;
            sum += group.cpuPercent;
            for (const ProcessUsage& member : group.members) {
                pids.insert(member.pid);
                const bool sameApp = AppGrouper::outermostApp(member.path) ==
                                     AppGrouper::outermostApp(group.members.front().path);
                RC_ASSERT(sameApp);
            }
        }
        RC_ASSERT(pids.size() == usages.size());
        RC_ASSERT(std::set<std::int32_t>(pids.begin(), pids.end()).size() == pids.size());
        RC_ASSERT(sum == total);
    }));
}

TEST(SafetyGate, Decides) {
    for (const auto& [path, name, user, policy, answer] :
         testing::rows<5>("Sampling", "may be quit")) {
        const bool isMine = user == "501";
        EXPECT_EQ(SafetyGate::canQuit(isMine ? me : 0, me, path, name, policy == "regular"),
                  answer == "yes")
            << path << ' ' << name;
    }
    for (const std::string_view name : SafetyGate::denyNames) {
        EXPECT_FALSE(SafetyGate::canQuit(me, me, "/x/y", name, true)) << name;
    }
}

TEST(Smoother, AveragesOverAllTicksCountingAbsenceAsZero) {
    Smoother::History history;
    for (const double before : {7.0, 30.0}) {
        history = Smoother::extended(history, {{"pid:1", before}, {"pid:2", 10.0}});
    }
    EXPECT_EQ(history.size(), 2U);
    history = Smoother::extended(Smoother::extended(history, {{"pid:2", 20.0}}), {{"pid:2", 60.0}});
    ASSERT_EQ(history.size(), 3U) << "the oldest tick is no longer spanned";
    const auto smoothed =
        Smoother::average({lone(1, "/a", 99), lone(2, "/b", 50), lone(3, "/c", 40)}, history);
    ASSERT_EQ(smoothed.size(), 3U);
    EXPECT_EQ(smoothed[0].id, "pid:2");
    EXPECT_EQ(smoothed[0].cpuPercent, 30);
    EXPECT_EQ(smoothed[1].cpuPercent, 10);
    EXPECT_EQ(smoothed[1].members.front().cpuPercent, 99) << "members keep the raw figures";
    EXPECT_EQ(smoothed[2].cpuPercent, 0);

    const std::vector<ProcessGroup> latest{lone(1, "/z", 1), lone(2, "/a", 2)};
    EXPECT_EQ(Smoother::average(latest, {}), latest) << "no history leaves all as it is";
    const auto flat = Smoother::extended({}, {{"pid:1", 5.0}, {"pid:2", 5.0}});
    EXPECT_EQ(Smoother::average(latest, flat)[0].id, "pid:1") << "ties keep their order";
    const std::vector<ProcessGroup> twins{lone(1, "/a", 1), lone(1, "/a", 2)};
    EXPECT_EQ(Smoother::cpuByID(twins), (Smoother::CPUByID{{"pid:1", 3.0}}));
}

} // namespace
} // namespace pacelet
