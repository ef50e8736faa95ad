#include "Core/Inspectors/BackgroundItemsReader.h"

#include <gtest/gtest.h>

namespace pacelet {
namespace {

using namespace BackgroundItemsReader;

std::optional<BackgroundItem> job(const std::string& members,
                                  const std::optional<std::string>& bundleRoot = {}) {
    return parse("<plist version=\"1.0\"><dict>" + members + "</dict></plist>", "/src",
                 ItemScope::userAgent, bundleRoot);
}

std::string label(const std::string& text = "com.a.b") {
    return "<key>Label</key><string>" + text + "</string>";
}
std::string member(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key>" + value;
}

TEST(BackgroundItems, NeedALabel) {
    EXPECT_EQ(job(label()),
              (BackgroundItem{"com.a.b", {}, "/src", ItemScope::userAgent, {}, false, false, {}}));
    EXPECT_EQ(job(label())->id(), "com.a.b|/src");
    EXPECT_EQ(job(""), std::nullopt);
    EXPECT_EQ(job(member("Label", "<integer>7</integer>")), std::nullopt);
    EXPECT_EQ(parse("", "/src", ItemScope::userAgent, {}), std::nullopt);
}

TEST(BackgroundItems, TakeTheFirstProgramThatIsTold) {
    const std::string program = member("Program", "<string>/bin/p</string>");
    const std::string bundled = member("BundleProgram", "<string>Contents/MacOS/h</string>");
    const std::string arguments =
        member("ProgramArguments", "<array><string>/bin/a</string><string>-x</string></array>");
    const std::optional<std::string> root = "/Applications/Foo.app";
    struct Case {
        std::string members;
        std::optional<std::string> root;
        std::optional<std::string> program;
    };
    for (const Case& each : {
             Case{program + bundled + arguments, root, "/bin/p"},
             Case{bundled + arguments, root, "/Applications/Foo.app/Contents/MacOS/h"},
             Case{bundled + arguments, {}, "/bin/a"},
             Case{bundled, {}, {}},
             Case{member("Program", "<true/>") + arguments, root, "/bin/a"},
             Case{member("ProgramArguments", "<array/>"), root, {}},
             Case{member("ProgramArguments", "<array><string>a</string><true/></array>"), root, {}},
             Case{member("ProgramArguments", "<string>/bin/a</string>"), root, {}},
         }) {
        EXPECT_EQ(job(label() + each.members, each.root)->program, each.program) << each.members;
    }
}

TEST(BackgroundItems, ReadKeepAliveAndRunAtLoad) {
    struct Case {
        std::string value;
        bool keepAlive;
        bool runAtLoad;
    };
    for (const Case& each : {
             Case{"<true/>", true, true},
             Case{"<false/>", false, false},
             Case{"<dict/>", true, false},
             Case{"<dict><key>SuccessfulExit</key><false/></dict>", true, false},
             Case{"<integer>1</integer>", false, false},
             Case{"<string>true</string>", false, false},
         }) {
        const auto item =
            job(label() + member("KeepAlive", each.value) + member("RunAtLoad", each.value));
        EXPECT_EQ(item->keepAlive, each.keepAlive) << each.value;
        EXPECT_EQ(item->runAtLoad, each.runAtLoad) << each.value;
    }
}

TEST(BackgroundItems, FindTheirOwner) {
    const InstalledApps none;
    const InstalledApps vendor{{"com.vendor.Main", "Main"}};
    struct Case {
        std::optional<std::string> program;
        std::string label;
        InstalledApps installed;
        std::optional<std::string> owner;
    };
    for (const Case& each : {
             Case{"/Applications/Foo.app/Contents/MacOS/foo", "com.vendor.x", vendor, "Foo"},
             Case{"/Applications/Foo.app", "com.vendor.x", vendor, "Foo"},
             Case{"/Applications/A b.app/Contents/Inner.app/x", "x", none, "A b"},
             Case{"/Users/ann/Apps/Foo.app/Contents/MacOS/foo", "com.vendor.x", vendor, "Foo"},
             Case{"/Applications/Foo.apple/x", "com.other.x", vendor, {}},
             Case{"/Library/Vendor/Agent.app/Contents/MacOS/agent", "com.vendor.agent", vendor,
                  "Main"},
             Case{"/Library/Vendor/Agent.app/Contents/MacOS/agent", "com.vendor.agent", none,
                  "Agent"},
             Case{"/Library/a.app/v2.app", "com.other.x", vendor, "a"},
             Case{"/Library/v1.2.app", "com.other.x", vendor, "v1.2"},
             Case{"/usr/local/bin/tool", "com.vendor.tool", vendor, "Main"},
             Case{{}, "com.vendor", vendor, "Main"},
             Case{{}, ".com..vendor.tool", vendor, "Main"},
             Case{{}, "tool", vendor, {}},
             Case{{}, "", {{"", "Empty"}, {"com", "Com"}}, {}},
             Case{{}, "com.Vendor.tool", vendor, {}},
             Case{{}, "com.vendors.tool", vendor, {}},
             Case{{}, "com.vendor.a.x", {{"com.vendor.a", "A"}, {"com.vendor.b", "B"}}, "A"},
             Case{{}, "com.vendor.a.x", {{"com.vendor.b", "B"}, {"com.vendor.z", "Z"}}, "B"},
             Case{{}, "com.vendor.a.x", {{"com.vendor", "V"}, {"com.vendor.a.x.y", "Y"}}, "Y"},
         }) {
        EXPECT_EQ(ownerApp(each.program, each.label, each.installed), each.owner)
            << each.program.value_or("-") << " " << each.label;
    }
}

TEST(BackgroundItems, ReadTheListOfRunningJobs) {
    EXPECT_EQ(parseLaunchctlList("PID\tStatus\tLabel\n"
                                 "123\t0\tcom.a\n"
                                 "-\t0\tcom.b\n"
                                 "\n"
                                 "-7\t-9\tcom.c\textra\n"
                                 "\t\t+8\t\t0\tcom. d \t\n"
                                 "2147483648\t0\tcom.e\n"
                                 "12x\t0\tcom.f\n"
                                 "12\tcom.g\n"
                                 " 12\t0\tcom.h\n"
                                 "5\t0\tcom.a\n"
                                 "2147483647\t0\tcom.i"),
              (RunningJobs{{"com.a", 5}, {"com.c", -7}, {"com. d ", 8}, {"com.i", 2147483647}}));
    for (const char* text : {"", "\n\n", "PID\tStatus\tLabel\n", "123\t0\tcom.a"}) {
        EXPECT_TRUE(parseLaunchctlList(text).empty()) << text;
    }
    EXPECT_EQ(parseLaunchctlList("\n\nany\r\n1\t0\tcom.a\r\n"), (RunningJobs{{"com.a\r", 1}}))
        << "only a line feed ends a line";
}

TEST(BackgroundItems, RunUnderTheirLabelOrElseByTheirProgram) {
    const auto item = [](const char* itemLabel, std::optional<std::string> program) {
        BackgroundItem made;
        made.label = itemLabel;
        made.program = std::move(program);
        made.pid = 99;
        return made;
    };
    const auto process = [](std::int32_t pid, const char* path) {
        ProcessSample sample;
        sample.pid = pid;
        sample.path = path;
        return sample;
    };
    const auto items = markRunning(
        {item("a", "/bin/p"), item("b", "/bin/p"), item("c", "/bin/q"), item("d", std::nullopt)},
        {{"a", 1}}, {process(2, "/bin/p"), process(3, "/bin/p"), process(4, "")});
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[0].pid, 1);
    EXPECT_EQ(items[1].pid, 2) << "the first of two processes";
    EXPECT_EQ(items[2].pid, std::nullopt);
    EXPECT_EQ(items[3].pid, std::nullopt);
}

TEST(BackgroundItems, NameTheirScopes) {
    for (const auto scope : {ItemScope::userAgent, ItemScope::systemAgent, ItemScope::systemDaemon,
                             ItemScope::appBundled}) {
        EXPECT_EQ(itemScopeFromRawValue(rawValue(scope)), scope);
    }
    EXPECT_EQ(rawValue(ItemScope::systemDaemon), "systemDaemon");
    EXPECT_EQ(itemScopeFromRawValue("UserAgent"), std::nullopt);
}

} // namespace
} // namespace pacelet
