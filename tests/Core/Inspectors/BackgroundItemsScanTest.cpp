#include "Core/Inspectors/BackgroundItemsReader.h"

#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace pacelet {
namespace {

std::string plist(const std::string& members) {
    return "<plist version=\"1.0\"><dict>" + members + "</dict></plist>";
}
std::string pair(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><string>" + value + "</string>";
}

/// What a test looks at: label, file below the folder, scope, owner, program.
struct Seen {
    std::string label;
    std::string source;
    ItemScope scope;
    std::optional<std::string> owner;
    std::optional<std::string> program;

    bool operator==(const Seen&) const = default;
};

void PrintTo(const Seen& seen, std::ostream* out) {
    *out << seen.label << " | " << seen.source << " | " << rawValue(seen.scope) << " | "
         << seen.owner.value_or("-") << " | " << seen.program.value_or("-");
}

class BackgroundItemsScan : public ::testing::Test {
protected:
    std::vector<Seen> scan() const {
        const std::string base = folder.path().string();
        std::vector<Seen> seen;
        for (const BackgroundItem& item :
             BackgroundItemsReader::scan(base + "/home", base + "/root/")) {
            EXPECT_EQ(item.source.substr(0, base.size()), base);
            EXPECT_EQ(item.pid, std::nullopt);
            seen.push_back({item.label, item.source.substr(base.size()), item.scope, item.ownerApp,
                            item.program});
        }
        return seen;
    }

    testing::TemporaryFolder folder;
};

TEST_F(BackgroundItemsScan, GoesThroughFoldersAndBundlesInOrder) {
    const std::string app = "root/Applications/Foo.app/Contents/";
    folder.write(app + "Info.plist", plist(pair("CFBundleIdentifier", "com.vendor.foo")));
    folder.write(app + "Library/LaunchAgents/z.plist",
                 plist(pair("Label", "other.z") + pair("BundleProgram", "Contents/z")));
    folder.write(app + "Library/LaunchDaemons/d.plist", plist(pair("Label", "other.d")));
    const std::string login = app + "Library/LoginItems/";
    folder.write(login + "H.app/Contents/Info.plist",
                 plist(pair("CFBundleIdentifier", "h.id") + pair("CFBundleExecutable", "H x")));
    folder.write(login + "I.app/Contents/Info.plist", plist(pair("CFBundleIdentifier", "i.id")));
    folder.write(login + "J.app/Contents/Info.plist", plist(pair("CFBundleExecutable", "j")));
    folder.write(login + "K.app/other", "");
    folder.write("root/Applications/Anonymous 2.0.app/Contents/Library/LaunchAgents/a.plist",
                 plist(pair("Label", "com.vendor.a")));
    // A later application takes over an identifier; a folder inside Applications is not searched.
    folder.write("root/Applications/Zoo.app/Contents/Info.plist",
                 plist(pair("CFBundleIdentifier", "com.vendor.foo")));
    folder.write("root/Applications/Inner/Bar.app/Contents/Info.plist",
                 plist(pair("CFBundleIdentifier", "com.bar.bar")));
    folder.write("home/Library/LaunchAgents/b.plist", plist(pair("Label", "com.vendor.b")));
    folder.write("home/Library/LaunchAgents/a.plist",
                 plist(pair("Label", "com.bar.x") + pair("Program", "/Library/Ag.app/x")));
    folder.write("root/Library/LaunchAgents/a.plist", plist(pair("Label", "com.bar.x")));
    folder.write("root/Library/LaunchDaemons/a.plist", plist(pair("Label", "com.vendor.b")));

    const std::string apps = "/root/Applications/";
    const std::string foo = apps + "Foo.app/Contents/Library/";
    const std::string base = folder.path().string();
    EXPECT_EQ(
        scan(),
        (std::vector<Seen>{
            {"com.bar.x", "/home/Library/LaunchAgents/a.plist", ItemScope::userAgent, "Ag",
             "/Library/Ag.app/x"},
            {"com.vendor.b", "/home/Library/LaunchAgents/b.plist", ItemScope::userAgent, "Zoo", {}},
            {"com.bar.x", "/root/Library/LaunchAgents/a.plist", ItemScope::systemAgent, {}, {}},
            {"com.vendor.b",
             "/root/Library/LaunchDaemons/a.plist",
             ItemScope::systemDaemon,
             "Zoo",
             {}},
            {"com.vendor.a",
             apps + "Anonymous 2.0.app/Contents/Library/LaunchAgents/a.plist",
             ItemScope::appBundled,
             "Anonymous 2.0",
             {}},
            {"other.z", foo + "LaunchAgents/z.plist", ItemScope::appBundled, "Foo",
             base + apps + "Foo.app/Contents/z"},
            {"other.d", foo + "LaunchDaemons/d.plist", ItemScope::appBundled, "Foo", {}},
            {"h.id", foo + "LoginItems/H.app", ItemScope::appBundled, "Foo",
             base + foo + "LoginItems/H.app/Contents/MacOS/H x"},
            {"i.id", foo + "LoginItems/I.app", ItemScope::appBundled, "Foo", {}},
        }));
    const auto items = BackgroundItemsReader::scan(base + "/home/", base + "/root");
    EXPECT_TRUE(items[7].runAtLoad);
    EXPECT_FALSE(items[7].keepAlive);
}

TEST_F(BackgroundItemsScan, PassesOverWhatItCannotRead) {
    EXPECT_TRUE(scan().empty()) << "no folders at all";
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

    const auto seen = scan();
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0].source, "/" + agents + ".hidden.plist");
    EXPECT_EQ(seen[1].source, "/" + agents + "link.plist");
    EXPECT_EQ(seen[2].source, "/" + agents + "\xEF\xBF\xBD odd\n.plist");
}

} // namespace
} // namespace pacelet
