#include "Core/Sampling/SafetyGate.h"

#include "tests/Support/Processes.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

TEST(SafetyGate, Decides) {
    using testing::me;
    struct Case {
        std::string path;
        std::string name;
        bool expected;
        std::uint32_t uid = me;
        bool regular = true;
    };
    const std::vector<Case> cases{
        {"/Applications/Safari.app/Contents/MacOS/Safari", "Safari", true},
        {"/Applications/Safari.app/Contents/MacOS/Safari", "Safari", false, 0},
        {"/Applications/Safari.app/Contents/MacOS/Safari", "Safari", false, me, false},
        {"/anywhere/else", "Finder", false},
        {"/Applications/Finder", "helper", false},
        {"/Applications/Finder//", "helper", false},
        {"/usr/local/bin/thing", "thing", false},
        {"/System/Library/x", "x", false},
        {"/sbin/x", "x", false},
        {"/bin/x", "x", false},
        {"/Users/me/bin/finder", "finder", true},
        {"/Users/usr/x", "x", true},
        {"", "x", true},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(SafetyGate::canQuit(row.uid, me, row.path, row.name, row.regular), row.expected)
            << row.path << ' ' << row.name;
    }
    for (const std::string_view name : SafetyGate::denyNames) {
        EXPECT_FALSE(SafetyGate::canQuit(me, me, "/x/y", name, true)) << name;
    }
}

} // namespace
} // namespace pacelet
