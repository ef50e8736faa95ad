#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Hosts/Linux/LinuxHost.h"
#include "Hosts/Linux/Systemd/LaunchctlTool.h"
#include "Hosts/Linux/Systemd/UnitGroups.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace pacelet::Linux {
namespace {

using BackgroundItemsReader::parseLaunchctlList;
using BackgroundItemsReader::RunningJobs;
using pacelet::testing::TemporaryFolder;

TEST(Units, AreListedAsTheMacListsJobs) {
    const std::vector<Unit> units{
        {"ssh.service", 812}, {"odd\tna\nme.service", 7}, {"two words@1.service", 2'147'483'647}};
    EXPECT_EQ(LaunchctlTool::listing(units), "PID\tStatus\tLabel\n"
                                             "812\t0\tssh.service\n"
                                             "7\t0\todd?na?me.service\n"
                                             "2147483647\t0\ttwo words@1.service\n");
    EXPECT_EQ(parseLaunchctlList(LaunchctlTool::listing(units)),
              (RunningJobs{{"ssh.service", 812},
                           {"odd?na?me.service", 7},
                           {"two words@1.service", 2'147'483'647}}));
    EXPECT_TRUE(parseLaunchctlList(LaunchctlTool::listing({})).empty());
}

/// A machine's control groups and processes.
class UnitGroupsTest : public ::testing::Test {
protected:
    void group(const std::string& name, const std::string& pids) const {
        folder.write("cgroup/" + name + "/cgroup.procs", pids);
    }
    void process(int pid, int parent) const {
        folder.write("proc/" + std::to_string(pid) + "/stat",
                     std::to_string(pid) + " (a b) c) S " + std::to_string(parent) +
                         " 1 1 0 -1 0 0 0 0 0 0 0 0 0 20 0 1 0 50 0 25 0 1 0 0");
    }
    std::vector<Unit> units() const {
        return readUnitGroups(folder.path() / "cgroup", folder.path() / "proc", 1000);
    }

    TemporaryFolder folder;
};

TEST_F(UnitGroupsTest, RunningServicesHaveTheirMainProcess) {
    for (const std::string root : {"", "unified/", "systemd/"}) {
        folder.write("cgroup/.keep", "");
        std::filesystem::remove_all(folder.path() / "cgroup");
        EXPECT_TRUE(units().empty());
        group(root + "system.slice/ssh.service", "21\n20\n");
        group(root + "system.slice/idle.service", "");
        group(root + "system.slice/messy.service", "x\n-3\n0\n\n99999999999\n30\n");
        group(root + "system.slice/system-tty.slice/tty@1.service", "40\n");
        group(root + "system.slice/boxes.service/box", "51\n50\n");
        group(root + "system.slice/some.mount", "60\n");
        const std::string user = root + "user.slice/user-1000.slice/user@1000.service/";
        group(user + "app.slice/sync.service", "70\n");
        group(user + "init.scope", "71\n");
        group(root + "user.slice/user-1001.slice/user@1001.service/app.slice/theirs.service",
              "80\n");
        for (const int first : {20, 30, 40, 50, 71, 80}) {
            process(first, 1);
        }
        for (const auto& [child, parent] : {std::pair{21, 20}, {51, 50}, {70, 71}}) {
            process(child, parent);
        }
        EXPECT_EQ(units(), (std::vector<Unit>{{"boxes.service", 50},
                                              {"messy.service", 30},
                                              {"ssh.service", 20},
                                              {"tty@1.service", 40},
                                              {"sync.service", 70}}))
            << root;
    }
}

TEST_F(UnitGroupsTest, DeepTreesAndLoopsOfLinksEnd) {
    std::string slice = "system.slice";
    for (int depth = 0; depth < 40; ++depth) {
        slice += "/system-deep.slice";
    }
    group(slice + "/far.service", "5\n");
    group("system.slice/near.service", "6\n");
    folder.link("cgroup/system.slice/loop.slice", folder.path() / "cgroup/system.slice");
    std::size_t near = 0;
    for (const Unit& unit : units()) {
        EXPECT_EQ(unit.name, "near.service");
        ++near;
    }
    EXPECT_GE(near, 1U);
}

TEST(Launchctl, AnswersHereAndRefusesOtherCommands) {
    LinuxHost host;
    const auto output = host.tools().run("/bin/launchctl", {"list"});
    EXPECT_EQ(output.status, 0);
    EXPECT_TRUE(output.stdout.starts_with("PID\tStatus\tLabel\n"));
    for (const auto& [label, pid] : parseLaunchctlList(output.stdout)) {
        EXPECT_GT(pid, 0) << label;
    }
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"list", "x"}, {"bootout"}}) {
        const auto refused = host.tools().run("/bin/launchctl", arguments);
        EXPECT_NE(refused.status, 0);
        EXPECT_FALSE(refused.stderr.empty());
    }
}

} // namespace
} // namespace pacelet::Linux
