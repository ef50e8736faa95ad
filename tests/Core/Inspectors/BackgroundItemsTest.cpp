#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Support/Text.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace pacelet {
namespace {

using namespace BackgroundItemsReader;
using testing::shown;

std::string plist(const std::string& members) {
    return "<plist version=\"1.0\"><dict>" + members + "</dict></plist>";
}
std::string member(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key>" + value;
}
std::string pair(const std::string& key, const std::string& value) {
    return member(key, "<string>" + value + "</string>");
}
std::optional<BackgroundItem> job(const std::string& members,
                                  const std::optional<std::string>& bundleRoot = {}) {
    return parse(plist(members), "/src", ItemScope::userAgent, bundleRoot);
}
std::optional<std::string> unlessNone(const std::string& field) {
    return field == "none" ? std::nullopt : std::optional{field};
}

TEST(BackgroundItems, NeedALabel) {
    EXPECT_EQ(job(pair("Label", "com.a.b")),
              (BackgroundItem{"com.a.b", {}, "/src", ItemScope::userAgent, {}, false, false, {}}));
    EXPECT_EQ(job(pair("Label", "com.a.b"))->id(), "com.a.b|/src");
    EXPECT_EQ(job(""), std::nullopt);
    EXPECT_EQ(job(member("Label", "<integer>7</integer>")), std::nullopt);
    EXPECT_EQ(parse("", "/src", ItemScope::userAgent, {}), std::nullopt);
}

TEST(BackgroundItems, TakeTheFirstProgramThatIsTold) {
    for (const auto& [members, bundle, program] :
         testing::rows<3>("Inspectors", "programs of background items")) {
        const auto item = job(pair("Label", "a") + members, unlessNone(bundle));
        EXPECT_EQ(shown(item->program), program) << members;
    }
}

TEST(BackgroundItems, ReadKeepAliveAndRunAtLoad) {
    struct Case {
        std::string value;
        bool keepAlive;
        bool runAtLoad;
    };
    for (const Case& each :
         {Case{"<true/>", true, true}, Case{"<false/>", false, false}, Case{"<dict/>", true, false},
          Case{"<dict><key>SuccessfulExit</key><false/></dict>", true, false},
          Case{"<integer>1</integer>", false, false},
          Case{"<string>true</string>", false, false}}) {
        const auto item = job(pair("Label", "a") + member("KeepAlive", each.value) +
                              member("RunAtLoad", each.value));
        EXPECT_EQ(item->keepAlive, each.keepAlive) << each.value;
        EXPECT_EQ(item->runAtLoad, each.runAtLoad) << each.value;
    }
}

TEST(BackgroundItems, FindTheirOwner) {
    for (const auto& [program, label, installed, owner] :
         testing::rows<4>("Inspectors", "owners of background items")) {
        InstalledApps apps;
        for (const std::string_view each : splitDroppingEmpty(installed, ',')) {
            const auto parts = splitKeepingEmpty(each, '=');
            apps.emplace(parts[0], parts[1]);
        }
        EXPECT_EQ(shown(ownerApp(unlessNone(program), label, apps)), owner)
            << program << ' ' << label;
    }
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

class BackgroundItemsScan : public ::testing::Test {
protected:
    void put(const std::string& file, const std::string& members) const {
        folder.write(file, plist(members));
    }
    /// Label, file below the folder, scope, owner and program of each.
    std::vector<std::array<std::string, 5>> scanned() const {
        const std::string base = folder.path().string();
        std::vector<std::array<std::string, 5>> seen;
        for (const BackgroundItem& item : scan(base + "/home", base + "/root/")) {
            EXPECT_EQ(item.source.substr(0, base.size()), base);
            EXPECT_EQ(item.pid, std::nullopt);
            std::string program = shown(item.program);
            if (program.starts_with(base + "/root")) {
                program.replace(0, base.size() + 5, "(root)");
            }
            seen.push_back({item.label, item.source.substr(base.size()),
                            std::string{rawValue(item.scope)}, shown(item.ownerApp), program});
        }
        return seen;
    }

    testing::TemporaryFolder folder;
};

TEST_F(BackgroundItemsScan, GoesThroughFoldersAndBundlesInOrder) {
    const std::string apps = "root/Applications/";
    const std::string app = apps + "Foo.app/Contents/";
    const std::string login = app + "Library/LoginItems/";
    const auto identifier = [](const std::string& id) { return pair("CFBundleIdentifier", id); };
    const auto label = [](const std::string& text) { return pair("Label", text); };
    put(app + "Info.plist", identifier("com.vendor.foo"));
    put(app + "Library/LaunchAgents/z.plist",
        label("other.z") + pair("BundleProgram", "Contents/z"));
    put(app + "Library/LaunchDaemons/d.plist", label("other.d"));
    put(login + "H.app/Contents/Info.plist",
        identifier("h.id") + pair("CFBundleExecutable", "H x"));
    put(login + "I.app/Contents/Info.plist", identifier("i.id"));
    put(login + "A.app/Contents/Info.plist", pair("CFBundleExecutable", "j"));
    folder.write(login + "K.app/other", "");
    put(apps + "Anonymous 2.0.app/Contents/Library/LaunchAgents/a.plist", label("com.vendor.a"));
    // A later application takes over an identifier; a folder inside Applications is not searched.
    put(apps + "Zoo.app/Contents/Info.plist", identifier("com.vendor.foo"));
    put(apps + "Inner/Bar.app/Contents/Info.plist", identifier("com.bar.bar"));
    put("home/Library/LaunchAgents/b.plist", label("com.vendor.b"));
    put("home/Library/LaunchAgents/a.plist",
        label("com.bar.x") + pair("Program", "/Library/Ag.app/x"));
    put("root/Library/LaunchAgents/a.plist", label("com.bar.x"));
    put("root/Library/LaunchDaemons/a.plist", label("com.vendor.b"));
    EXPECT_EQ(scanned(), testing::rows<5>("Inspectors", "found background items"));
    const auto items = scan(folder.path() / "home/", folder.path() / "root");
    EXPECT_TRUE(items[7].runAtLoad);
    EXPECT_FALSE(items[7].keepAlive);
}

TEST_F(BackgroundItemsScan, PassesOverWhatItCannotRead) {
    EXPECT_TRUE(scanned().empty()) << "no folders at all";
    const std::string agents = "home/Library/LaunchAgents/";
    const std::string good = plist(pair("Label", "good"));
    folder.write(agents + ".hidden.plist", good);
    folder.write(agents + "\xFF odd\n.plist", good);
    for (const char* name : {"good.plist.bak", "good.PLIST", "plist", ".plist", "good.plist~"}) {
        folder.write(agents + name, good);
    }
    folder.write(agents + "empty.plist", "");
    folder.write(agents + "rubbish.plist", good.substr(0, 40));
    folder.write(agents + "huge.plist", good + std::string(3 << 20, '\n'));
    folder.write(agents + "folder.plist/x.plist", good);
    const auto at = [&](const std::string& name) { return folder.path() / (agents + name); };
    ASSERT_EQ(::mkfifo(at("pipe.plist").c_str(), 0600), 0);
    std::filesystem::create_symlink("nowhere", at("broken.plist"));
    std::filesystem::create_symlink("loop.plist", at("loop.plist"));
    std::filesystem::create_symlink(".hidden.plist", at("link.plist"));
    folder.write("root/Applications/File.app", "");
    std::filesystem::create_symlink("nowhere", folder.path() / "root/Applications/Gone.app");
    folder.write("root/Library/LaunchAgents", "a file where a folder should be");

    const auto seen = scanned();
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0][1], "/" + agents + ".hidden.plist");
    EXPECT_EQ(seen[1][1], "/" + agents + "link.plist");
    EXPECT_EQ(seen[2][1], "/" + agents + "\xEF\xBF\xBD odd\n.plist");
}

} // namespace
} // namespace pacelet
