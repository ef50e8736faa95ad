#include "Core/Browser/TabListing.h"
#include "Core/Browser/TabScript.h"
#include "Core/Support/Files.h"
#include "Hosts/Linux/Browser/BridgedApplication.h"
#include "Hosts/Linux/Browser/BridgedBrowsers.h"
#include "Hosts/Linux/Browser/BrowserProfiles.h"
#include "Hosts/Linux/Browser/ExtensionRegistry.h"
#include "Hosts/Linux/Browser/OSAScriptTool.h"
#include "tests/Support/Eventually.h"
#include "tests/Support/TemporaryFolder.h"

#include <atomic>
#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <mutex>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>

namespace pacelet::Linux {
namespace {

using ::testing::ElementsAre;
using testing::eventually;
using ::testing::HasSubstr;
using ::testing::Optional;
using testing::TemporaryFolder;

const std::string chrome = "com.google.Chrome";
const std::string chromium = "org.chromium.Chromium";

/// The real bridge with its ends in our hands, as those of a browser. Its parent is this process.
class PlayedBrowser {
public:
    explicit PlayedBrowser(const std::string& runtime) {
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        EXPECT_EQ(::pipe2(in.data(), O_CLOEXEC) + ::pipe2(out.data(), O_CLOEXEC), 0);
        toBridge_ = Descriptor{in[1]};
        fromBridge_ = Descriptor{out[0]};
        pid_ = ::fork();
        if (pid_ == 0) {
            ::dup2(in[0], STDIN_FILENO);
            ::dup2(out[1], STDOUT_FILENO);
            ::setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
            ::execl(PACELET_BIN_DIR "/pacelet-browser-bridge", "pacelet-browser-bridge",
                    "chrome-extension://test/", nullptr);
            ::_exit(127);
        }
        ::close(in[0]);
        ::close(out[1]);
    }
    ~PlayedBrowser() { end(); }

    void send(std::string_view bytes) {
        const std::lock_guard lock{mutex_};
        while (!bytes.empty()) {
            const ssize_t count = ::write(toBridge_.get(), bytes.data(), bytes.size());
            if (count < 0 && errno == EPIPE) {
                return; // a bridge that was killed reads no more
            }
            ASSERT_GT(count, 0);
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    /// The next request; empty when the bridge has gone.
    std::string next() {
        for (;;) {
            if (auto message = reader_.next()) {
                return *std::move(message);
            }
            std::array<char, 4096> buffer;
            const ssize_t count = ::read(fromBridge_.get(), buffer.data(), buffer.size());
            if (count <= 0 || !reader_.feed({buffer.data(), static_cast<std::size_t>(count)})) {
                return {};
            }
        }
    }

    /// Answers requests by what `reply` makes of them, until the bridge goes.
    void serve(std::function<std::string(const std::string&)> reply) {
        server_ = std::thread{[this, reply = std::move(reply)] {
            for (std::string request = next(); !request.empty(); request = next()) {
                // {"id":7,"ask":…
                const std::string id = request.substr(6, request.find(',') - 6);
                send(BridgeWire::frame(fmt::format("{{\"id\":{},{}}}", id, reply(request))));
            }
        }};
    }

    /// Exit status of the bridge after the browser has closed its ends.
    int end() {
        pid_t pid = 0;
        {
            const std::lock_guard lock{mutex_};
            toBridge_.reset();
            pid = std::exchange(pid_, 0);
        }
        if (pid > 0) {
            ::waitpid(pid, &status_, 0);
        }
        if (server_.joinable()) {
            server_.join();
        }
        return status_;
    }

    std::int32_t pid() {
        const std::lock_guard lock{mutex_};
        return pid_;
    }

private:
    /// What the bridge's process puts in order looks unordered to the thread sanitizer.
    std::mutex mutex_;
    Descriptor toBridge_;
    Descriptor fromBridge_;
    BridgeWire::FrameReader reader_{BridgeWire::longestRequest};
    pid_t pid_ = 0;
    int status_ = 0;
    std::thread server_;
};

class Bridges : public ::testing::Test {
protected:
    /// A machine on which this process is the browser.
    BrowserConnections::Settings settings() {
        return {
            folder.path() / "pacelet", (folder.path() / "config").string(), "/proc", [this] {
                const AppProcess browser{{::getpid(), 1}, 1, AppRole::main, "google-chrome", ""};
                return isRunning ? std::vector{browser} : std::vector<AppProcess>{};
            }};
    }

    void connect(BrowserConnections& browsers, std::size_t count) {
        ASSERT_TRUE(eventually([&] { return browsers.profiles(chrome).size() == count; }));
    }

    static Shell::Output run(BrowserConnections& browsers, const std::string& script) {
        return OSAScriptTool::run({"-e", script}, browsers, {});
    }

    std::string runtime() { return folder.path().string(); }

    TemporaryFolder folder;
    bool isRunning = true;
};

const std::string listScript = TabScript::list(ChromiumBrowser::chrome);

std::string window(int id, const std::vector<std::string>& tabs) {
    return fmt::format(R"({{"id":{},"focused":false,"tabs":[{}]}})", id, fmt::join(tabs, ","));
}
std::string tab(int id, const std::string& title) {
    return fmt::format(R"({{"id":{0},"active":false,"title":"{1}","url":"http://x/{0}"}})", id,
                       title);
}

TEST_F(Bridges, CarryWholeFramesToWhoeverListensAndSleepOtherwise) {
    PlayedBrowser browser{runtime()};
    // Nobody is there: this is lost, and so is the frame that has begun when somebody comes.
    browser.send(BridgeWire::frame("early"));
    const std::string cut = BridgeWire::frame(std::string(100'000, 'x'));
    browser.send(std::string_view{cut}.substr(0, 50'000));
    const std::string place = runtime() + "/pacelet";
    ASSERT_TRUE(eventually([&] { return std::filesystem::exists(place); }));
    {
        BridgeServer server{place, {}};
        ASSERT_TRUE(eventually([&] { return server.links().size() == 1; }));
        struct stat facts {};
        ASSERT_EQ(::stat(BridgeWire::socketPath(place).c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 0777U, 0600U);
        EXPECT_EQ(server.links().front()->browserPid(), ::getpid());
        browser.send(std::string_view{cut}.substr(50'000));
        browser.send(BridgeWire::frame(R"({"id":9,"made":"by nobody"})"));
        browser.send(BridgeWire::frame(R"({"id":1,"tab":5})"));
        const auto reply = server.links().front()->ask({.ask = "openTab"});
        EXPECT_EQ(reply.made, 5);
        EXPECT_EQ(browser.next(), R"({"id":1,"ask":"openTab"})");
        EXPECT_THROW(server.links().front()->ask({.ask = "list"}, Seconds{0.05}), LinkError);
    }
    // The next program finds the same bridge, and hears nothing of what was for the last one.
    browser.send(BridgeWire::frame(R"({"id":1,"tab":6})"));
    BridgeServer server{place, {}};
    ASSERT_TRUE(eventually([&] { return server.links().size() == 1; }));
    browser.send(BridgeWire::frame(R"({"id":1,"tab":7})"));
    EXPECT_EQ(server.links().front()->ask({.ask = "openTab"}).made, 7);
    EXPECT_EQ(browser.end(), 0);
    EXPECT_TRUE(eventually([&] { return server.links().empty(); }));
}

TEST_F(Bridges, RefuseWhatIsNoBrowserAndNoFolderOfTheirOwn) {
    // A frame longer than any browser's.
    PlayedBrowser babbler{runtime()};
    babbler.send({"\xFF\xFF\xFF\x7F", 4});
    EXPECT_EQ(babbler.end(), 0);
    folder.write("elsewhere/pacelet", "a file");
    PlayedBrowser lost{runtime() + "/elsewhere"};
    EXPECT_EQ(WEXITSTATUS(lost.end()), 1);
}

TEST_F(Bridges, ScriptsReachTheTabsOfAllProfilesAndOnlyThose) {
    BrowserConnections browsers{settings(), {}};
    EXPECT_THAT(run(browsers, listScript).stderr, HasSubstr("(-1743)"));
    isRunning = false;
    EXPECT_THAT(run(browsers, listScript).stderr, HasSubstr("(-600)"));
    EXPECT_THAT(run(browsers, TabScript::list(ChromiumBrowser::brave)).stderr, HasSubstr("(-600)"));
    isRunning = true;

    std::vector<std::string> asked;
    std::mutex mutex;
    const auto serve = [&](PlayedBrowser& browser, const std::string& windows) {
        browser.serve([&, windows](const std::string& request) {
            const std::lock_guard lock{mutex};
            if (request.find("\"hello\"") != std::string::npos) {
                return std::string{"\"hello\":true"};
            }
            if (request.find("\"list\"") != std::string::npos) {
                return "\"windows\":[" + windows + ']';
            }
            asked.push_back(request.substr(request.find("\"ask\"")));
            return std::string{"\"tab\":99"};
        });
    };
    PlayedBrowser first{runtime()};
    serve(first,
          window(10, {tab(11, "One\\u001e\\u001fT"), tab(12, "Two - Google Chrome - Work")}));
    connect(browsers, 1);
    PlayedBrowser second{runtime()};
    serve(second, window(10, {tab(11, "Three")}) + R"(,{"id":-1},{"id":20,"tabs":[{"id":0}]},7)");
    connect(browsers, 2);

    const auto listed = TabScript::parse(run(browsers, listScript).stdout, "Google Chrome");
    ASSERT_EQ(listed.size(), 3U);
    EXPECT_EQ(listed[0].tabs.at(0).title, "One  T");
    EXPECT_EQ(listed[0].tabs.at(1).url, "http://x/12");
    EXPECT_EQ(listed[1].tabs.at(0).title, "Three");
    EXPECT_THAT(listed[0].profile, Optional(std::string{"Profile"}));
    EXPECT_THAT(listed[1].profile, Optional(std::string{"Profile (2)"}));
    EXPECT_NE(listed[0].id, listed[1].id);

    // A tab that has gone is skipped; a window that has gone ends the script, and what it did
    // stays.
    BrowserTab gone = listed[0].tabs[0];
    gone.tabID = "4711";
    const auto closing = [&](const std::vector<BrowserTab>& tabs) {
        return run(browsers, TabScript::close(tabs, ChromiumBrowser::chrome));
    };
    EXPECT_EQ(closing({gone, listed[1].tabs[0]}).stderr, "");
    gone.windowID = "4711";
    EXPECT_THAT(closing({listed[0].tabs[1], gone}).stderr, HasSubstr("(-1728)"));
    const MergePlan plan{listed[0].id, {"http://x/\"y\\"}, {listed[1].id}, {}};
    EXPECT_EQ(run(browsers, TabScript::merge(plan, ChromiumBrowser::chrome)).stderr, "");
    EXPECT_EQ(run(browsers, TabScript::openMemorySaver(ChromiumBrowser::chrome)).stderr, "");
    {
        const std::lock_guard lock{mutex};
        EXPECT_THAT(
            asked,
            ElementsAre(R"("ask":"closeTab","window":10,"tab":11})",
                        R"("ask":"closeTab","window":10,"tab":12})",
                        R"("ask":"openTab","window":10,"url":"http://x/\"y\\"})",
                        R"("ask":"closeWindow","window":10})",
                        R"("ask":"openTab","window":10,"url":"chrome://settings/performance"})",
                        R"("ask":"show","window":10,"tab":99})"));
    }

    // Whoever goes takes its windows along.
    second.end();
    connect(browsers, 1);
    EXPECT_EQ(TabScript::parse(run(browsers, listScript).stdout, "Google Chrome").size(), 1U);
}

/// An answer longer than what a pipe or a socket holds; the time is for docs/performance.md.
TEST_F(Bridges, CarryThousandsOfTabs) {
    BrowserConnections browsers{settings(), {}};
    std::vector<std::string> windows;
    for (int first = 1; first < 5000; first += 100) {
        std::vector<std::string> tabs;
        for (int each = first; each < first + 100; ++each) {
            tabs.push_back(tab(each, "What stands in the title of page " + std::to_string(each)));
        }
        windows.push_back(window(first, tabs));
    }
    PlayedBrowser browser{runtime()};
    browser.serve([list = fmt::format("\"windows\":[{}]", fmt::join(windows, ","))](
                      const std::string&) { return list; });
    connect(browsers, 1);
    const auto start = std::chrono::steady_clock::now();
    const auto listed = TabScript::parse(run(browsers, listScript).stdout, "Google Chrome");
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    ASSERT_EQ(listed.size(), 50U);
    EXPECT_EQ(listed.back().tabs.back().title, "What stands in the title of page 5000");
    fmt::print("5000 tabs: {:.0f} ms\n", took.count());
}

TEST_F(Bridges, ABrowserThatDiesInTheMiddleOrRefusesIsToldApart) {
    BrowserConnections browsers{settings(), {}};
    PlayedBrowser browser{runtime()};
    enum class Behaviour { lists, refuses, losesItsBridge };
    std::atomic<Behaviour> behaviour = Behaviour::lists;
    browser.serve([&](const std::string& request) {
        if (behaviour == Behaviour::refuses) {
            return std::string{R"("error":"It won't.")"};
        }
        if (behaviour == Behaviour::losesItsBridge &&
            request.find("\"list\"") != std::string::npos) {
            ::kill(browser.pid(), SIGKILL);
        }
        return std::string{"\"windows\":[]"};
    });
    connect(browsers, 1);
    behaviour = Behaviour::refuses;
    EXPECT_THAT(run(browsers, listScript).stderr, HasSubstr("It won't. (-1728)"));
    behaviour = Behaviour::losesItsBridge;
    EXPECT_THAT(run(browsers, listScript).stderr, HasSubstr("(-609)"));
    std::string error;
    EXPECT_TRUE(eventually([&] {
        error = run(browsers, listScript).stderr;
        return error.find("(-1743)") != std::string::npos;
    })) << error;
}

TEST_F(Bridges, TheBrowserIsToldWhereTheBridgeStandsAndNothingBefore) {
    ExtensionRegistry::Settings places{folder.path().string(), "/opt/bridge", "/opt/extension", {}};
    ExtensionRegistry registry{places, settings()};
    const std::string file = "config/chromium/NativeMessagingHosts/app.pacelet.browser.json";
    EXPECT_EQ(registry.setup(chromium), ExtensionSetup::unknown);
    EXPECT_EQ(folder.read(file), "");
    EXPECT_TRUE(registry.registerProgram(chromium));
    EXPECT_EQ(registry.setup(chromium), ExtensionSetup::registered);
    EXPECT_THAT(folder.read(file), HasSubstr(R"("path":"/opt/bridge","type":"stdio")"));
    EXPECT_FALSE(registry.registerProgram("org.example.Other"));

    folder.write("etc/chromium/native-messaging-hosts/app.pacelet.browser.json", "{}");
    folder.write("usr/share/chromium/extensions/pacelet/manifest.json", "{}");
    EXPECT_EQ(registry.setup(chromium), ExtensionSetup::provided);
    EXPECT_EQ(registry.setup("com.vivaldi.Vivaldi"), ExtensionSetup::registered);
    EXPECT_EQ(registry.setup("com.google.Chrome"), ExtensionSetup::unknown);
}

TEST(BrowserProfiles, AreToldByTheTokenAndNamedApart) {
    namespace Profiles = BrowserProfiles;
    using namespace std::string_literals;
    EXPECT_EQ(Profiles::userDataFolder("chromium\0--x\0--user-data-dir=/d ata\0"s, "/s"), "/d ata");
    EXPECT_EQ(Profiles::userDataFolder("chromium\0--user-data-dir=relative\0"s, "/s"), "/s");
    EXPECT_THAT(
        Profiles::namesIn(R"({"profile":{"info_cache":{"Default":{"name":" Work "},"P 1":{}}}})"),
        ElementsAre(std::pair{"Default"s, "Work"s}, std::pair{"P 1"s, ""s}));
    for (const char* broken : {"", "[]", R"({"profile":{"info_cache":[]}})"}) {
        EXPECT_TRUE(Profiles::namesIn(broken).empty());
    }
    const TemporaryFolder folder;
    const std::string settings = fmt::format("Local Extension Settings/{}/", extensionID);
    folder.write("Default/" + settings + "000003.log", "profile\x01other");
    folder.write("P 1/" + settings + "000003.log", "\0profile\x01token\0"s);
    EXPECT_THAT(Profiles::folderWith(folder.path(), "token"), Optional("P 1"s));
    EXPECT_EQ(Profiles::folderWith(folder.path(), "none"), std::nullopt);
    EXPECT_THAT(Profiles::shownNames({{"Work", true}}), ElementsAre(std::nullopt));
    EXPECT_THAT(Profiles::shownNames({{"A", false}, {"A", true}, {"", false}}),
                ElementsAre(Optional("A"s), Optional("A (2)"s), Optional("Profile"s)));
}

} // namespace
} // namespace pacelet::Linux
