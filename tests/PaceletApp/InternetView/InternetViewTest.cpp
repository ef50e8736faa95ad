#include "PaceletApp/InternetView/InternetModel.h"
#include "PaceletApp/InternetView/SavedSpeed.h"
#include "tests/PaceletApp/Support/ApplicationRig.h"
#include "tests/PaceletApp/Support/Table.h"

#include <thread>

namespace pacelet::testing {
namespace {

constexpr const char* nettop = "/usr/bin/nettop";
constexpr const char* networkQuality = "/usr/bin/networkQuality";
constexpr const char* testFailed =
    "The speed test didn't finish. Check your connection and try again.";

/// The internet screen in the main window.
class InternetViewTest : public ApplicationRig {
protected:
    void setNetwork(std::optional<Simulated::WiFi> wifi, NetworkPath path) {
        const auto world = mac().machine.lock();
        world->network.wifi = wifi;
        world->network.path = path;
    }

    /// The traffic of one process of this name is all there is.
    std::int32_t setTraffic(std::string_view name, std::int64_t in, std::int64_t out) {
        const auto world = mac().machine.lock();
        const std::int32_t pid = world->processes.find(name)->pid;
        world->network.traffic = {{pid, in, out}};
        return pid;
    }

    void setLine(Simulated::Line line) { mac().machine.lock()->network.line = line; }

    void show(double seconds = 6) {
        open(Screen::internet);
        pass(seconds);
    }

    /// Presses the button, and answers the question with "Run test".
    void startTest() {
        probe->click("run speed test");
        ASSERT_TRUE(comesUp("Test your internet speed?"));
        probe->press(Qt::Key_Return);
        settle();
    }

    /// One of 25 seconds, while everything else takes no time.
    void startLongTest() {
        scheduler().setBackgroundDuration(Seconds{25});
        startTest();
        scheduler().setBackgroundDuration(Seconds{0});
    }

    std::optional<SpeedResult> saved() { return savedSpeed(mac().preferences); }

    static constexpr NetworkPath overWiFi{true, true, false};
};

TEST_F(InternetViewTest, ChecksFirstAndThenTellsHowThingsStand) {
    launch("quiet");
    mac().network.setDelivery(Simulated::PathDelivery::onDemand);
    show(0);
    EXPECT_THAT(probe->texts(), AllOf(IsSupersetOf({"Checking your connection…", "Connection",
                                                    "See your real download and upload speed."}),
                                      Not(Contains("Wi-Fi"))));
    EXPECT_EQ(calls(nettop), 0);
    mac().network.setDelivery(Simulated::PathDelivery::atOnce);
    // The answer comes on a thread of the system's, and may come twice.
    std::thread{[this] { mac().network.deliver(2); }}.join();
    settle();
    pass(3);
    EXPECT_THAT(probe->texts(),
                AllOf(IsSupersetOf({"Your internet looks healthy.", "Wi-Fi", "Signal",
                                    "Excellent (-52 dBm)", "Band", "5 GHz", "Spotify",
                                    "Run a speed test to check your internet line too."}),
                      Not(Contains("Checking your connection…"))));
}

TEST_F(InternetViewTest, HasItsWordsForEveryLink) {
    using Simulated::WiFi;
    const WiFi radio{-60, -90, 600, 2};
    const WiFi unassociated{0, 0, 0, std::nullopt};
    const char* const healthy = "Your internet looks healthy.";
    const NetworkPath wired{true, false, true};
    const NetworkPath other{true, false, false};
    const Table<std::optional<WiFi>, NetworkPath, const char*, const char*, bool> rows = {
        {radio, overWiFi, "Wi-Fi", healthy, true},
        {unassociated, overWiFi, "Wi-Fi", healthy, false},
        {radio, wired, "Wired connection", healthy, false},
        {std::nullopt, other, "Connected", healthy, false},
        {WiFi{-71, -90, 58, 2}, overWiFi, "Wi-Fi", "Your Wi-Fi signal is only fair.", true},
        {radio, {}, "Offline", "You're offline.", false},
    };
    launch("quiet");
    show();
    for (const auto& [wifi, path, link, finding, hasRows] : rows) {
        setNetwork(wifi, path);
        const auto before = calls(nettop);
        pass(3); // the loop goes on in every state, offline too
        EXPECT_GT(calls(nettop), before);
        EXPECT_TRUE(probe->shows(link)) << link;
        EXPECT_TRUE(probe->shows(finding)) << finding;
        EXPECT_EQ(probe->shows("Signal"), hasRows) << finding;
    }
    EXPECT_FALSE(probe->shows(healthy));
    probe->clickText("Wi-Fi settings");
    settle();
    EXPECT_EQ(openedURLs().size(), 1U);
}

TEST_F(InternetViewTest, FoldsHelpersIntoTheirApplication) {
    launch("chrome-tabs");
    show();
    ASSERT_TRUE(probe->shows("Google Chrome"));
    EXPECT_FALSE(probe->shows("Google Chrome Helper"));
    setTraffic("apsd", 2'500'000, 1'000'000);
    pass(3);
    EXPECT_THAT(probe->texts(), Contains(StartsWith("apsd is using 3.")));
    EXPECT_FALSE(probe->shows("Google Chrome"));
    mac().machine.inject(Simulated::ToolMissing{nettop});
    pass(3);
    EXPECT_TRUE(probe->shows("Nothing is using much bandwidth right now."));
    EXPECT_TRUE(probe->shows("Your internet looks healthy."));
}

TEST_F(InternetViewTest, ATestIsRunOnlyWhenTheUserSaysSo) {
    launch("quiet");
    show();
    const std::string question =
        "Pacelet uses Apple's built-in test against Apple's servers. It takes about 25 seconds "
        "and can use several hundred MB of data on fast connections.";
    for (const bool byKey : {true, false}) {
        mac().machine.lock()->network.isExpensive = byKey;
        probe->click("run speed test");
        ASSERT_TRUE(comesUp("Test your internet speed?"));
        EXPECT_TRUE(probe->shows(
            question + (byKey ? " Your connection is metered, so this may cost you." : "")));
        if (byKey) {
            probe->press(Qt::Key_Escape);
        } else {
            probe->clickText("Cancel");
        }
        ASSERT_TRUE(goesAway("Test your internet speed?"));
    }
    pass(60);
    EXPECT_EQ(calls(networkQuality), 0);
    EXPECT_TRUE(probe->shows("See your real download and upload speed."));

    startLongTest();
    EXPECT_TRUE(probe->shows("Testing your connection…"));
    EXPECT_FALSE(probe->item("run speed test")->isEnabled());
    const auto samples = calls(nettop);
    pass(24);
    EXPECT_EQ(calls(nettop), samples + 24); // its own traffic shows, too
    EXPECT_FALSE(saved());
    pass(1);
    EXPECT_THAT(probe->texts(),
                AllOf(IsSupersetOf({"Download", "412 Mbps", "Upload", "38 Mbps", "Responsiveness",
                                    "Medium (812 RPM)", "Latency", "15 ms", "Last tested now",
                                    "Wi-Fi signal and recent speed look fine."}),
                      Not(Contains("Testing your connection…"))));
    EXPECT_EQ(saved()->downloadMbps, 412);
    EXPECT_EQ(calls(networkQuality), 1);
    pass(185);
    EXPECT_TRUE(probe->shows("Last tested 3 minutes ago"));
}

TEST_F(InternetViewTest, AFailedTestSaysOneSentenceAndKeepsTheOldResult) {
    const Simulated::Failure failures[] = {Simulated::ToolMissing{networkQuality},
                                           Simulated::ToolNotPermitted{networkQuality},
                                           Simulated::ToolFails{networkQuality, 2, "no route"},
                                           Simulated::ToolPrints{networkQuality, "[]"}};
    launch("quiet");
    const SpeedResult old{50, 10, {}, {}, mac().machine.now()};
    saveSpeed(mac().preferences, old);
    show();
    for (const Simulated::Failure& failure : failures) {
        mac().machine.inject(failure);
        startTest();
        pass(2);
        EXPECT_THAT(probe->texts(), IsSupersetOf({testFailed, "50 Mbps"}));
        EXPECT_TRUE(probe->item("run speed test")->isEnabled());
        EXPECT_EQ(saved(), old);
        mac().machine.clearFailures();
    }
    startTest();
    pass(2);
    EXPECT_FALSE(probe->shows(testFailed));
    EXPECT_TRUE(probe->shows("412 Mbps"));
}

TEST_F(InternetViewTest, ATestOutlivesTheScreenThatAskedForIt) {
    launch("quiet");
    show();
    startLongTest();
    app().router().setScreen(Screen::overview);
    pass(20);
    EXPECT_FALSE(saved());
    // Asked for again, it is the same test, and its result is here when it is due.
    open(Screen::internet);
    startTest();
    EXPECT_TRUE(probe->shows("Testing your connection…"));
    pass(5);
    ASSERT_TRUE(saved());
    EXPECT_TRUE(probe->shows("412 Mbps"));
    EXPECT_EQ(calls(networkQuality), 1);
    // A window that is closed is a screen that is left.
    setLine({99e6, 9e6, {}, {}});
    startLongTest();
    app().closeWindow();
    closes(&Application::window);
    pass(30);
    EXPECT_EQ(saved()->downloadMbps, 99);
}

TEST_F(InternetViewTest, MeasuresOnlyWhileItCanBeSeen) {
    launch("quiet");
    open(Screen::overview);
    pass(10);
    EXPECT_EQ(calls(nettop), 0);
    const std::size_t sleeps = scheduler().pendingSleeps();
    const auto rests = [&] {
        settle();
        const auto before = calls(nettop);
        pass(10);
        return calls(nettop) == before && scheduler().pendingJobs() == 0;
    };
    app().router().setScreen(Screen::internet);
    pass(0);
    EXPECT_EQ(calls(nettop), 1);
    pass(10);
    EXPECT_EQ(calls(nettop), 11);
    app().router().setScreen(Screen::overview);
    EXPECT_TRUE(rests());
    EXPECT_EQ(scheduler().pendingSleeps(), sleeps);

    app().router().setScreen(Screen::internet);
    pass(1);
    app().window()->showMinimized();
    EXPECT_TRUE(rests());
    app().showWindow();
    EXPECT_FALSE(rests());

    // Left while a sample is under way: what comes back late is dropped.
    scheduler().setBackgroundDuration(Seconds{2});
    pass(1.5);
    app().router().setScreen(Screen::overview);
    scheduler().setBackgroundDuration(Seconds{0});
    pass(5);
    EXPECT_TRUE(rests());
}

TEST_F(InternetViewTest, StartsOverWithEveryVisit) {
    launch("quiet");
    mac().preferences.setData("lastSpeedTest", "{broken");
    mac().network.setDelivery(Simulated::PathDelivery::onDemand);
    show();
    EXPECT_THAT(probe->texts(), IsSupersetOf({"See your real download and upload speed.",
                                              "Checking your connection…"}));
    // An answer that comes when the screen has gone is for nobody.
    app().router().setScreen(Screen::overview);
    settle();
    mac().network.deliver();
    pass(5);
    EXPECT_EQ(calls(nettop), 0);
    app().router().setScreen(Screen::internet);
    pass(5);
    EXPECT_TRUE(probe->shows("Checking your connection…"));
    mac().network.deliver(); // a reading waits for its answer, however long
    pass(5);
    EXPECT_EQ(calls(nettop), 1);
}

} // namespace
} // namespace pacelet::testing
