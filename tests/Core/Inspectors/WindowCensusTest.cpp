#include "Core/Inspectors/WindowCensus.h"

#include <gmock/gmock.h>
#include <numeric>

namespace pacelet {
namespace {

using ::testing::ElementsAre;

WindowDictionary window(std::int64_t pid, const std::string& name) {
    return {{"kCGWindowLayer", std::int64_t{0}},
            {"kCGWindowOwnerPID", pid},
            {"kCGWindowOwnerName", name},
            {"kCGWindowIsOnscreen", true}};
}

WindowDictionary without(const std::string& key) {
    WindowDictionary made = window(1, "A");
    made.erase(key);
    return made;
}
WindowDictionary with(const std::string& key, WindowValue value) {
    WindowDictionary made = without(key);
    made.emplace(key, std::move(value));
    return made;
}

TEST(WindowCensus, CountsWindowsPerProcess) {
    EXPECT_THAT(WindowCensus::count({window(10, "Zed"), window(20, "Ant"), window(10, "Other")}),
                ElementsAre(WindowCount{"Zed", 10, 2}, WindowCount{"Ant", 20, 1}));
    EXPECT_THAT(WindowCensus::count({window(10, "Zed"), window(30, "Ant"), window(20, "Ant")}),
                ElementsAre(WindowCount{"Ant", 30, 1}, WindowCount{"Ant", 20, 1},
                            WindowCount{"Zed", 10, 1}));
    EXPECT_TRUE(WindowCensus::count({}).empty());
}

TEST(WindowCensus, SkipsWhatIsNoNormalWindow) {
    for (const WindowDictionary& each :
         {with("kCGWindowLayer", std::int64_t{25}), with("kCGWindowLayer", 0.0),
          with("kCGWindowLayer", false), without("kCGWindowLayer"),
          with("kCGWindowIsOnscreen", false), with("kCGWindowOwnerPID", "1"),
          with("kCGWindowOwnerPID", true), with("kCGWindowOwnerPID", std::int64_t{1} << 31),
          with("kCGWindowOwnerPID", 1.5), with("kCGWindowOwnerPID", 1e300),
          without("kCGWindowOwnerPID"), with("kCGWindowOwnerName", std::int64_t{1}),
          without("kCGWindowOwnerName")}) {
        EXPECT_TRUE(WindowCensus::count({each}).empty());
    }
    for (const WindowDictionary& each :
         {without("kCGWindowIsOnscreen"), with("kCGWindowIsOnscreen", std::int64_t{0}),
          with("kCGWindowOwnerPID", 1.0)}) {
        EXPECT_THAT(WindowCensus::count({each}), ElementsAre(WindowCount{"A", 1, 1}));
    }
}

struct FakeDisplay {
    std::optional<std::int64_t> current;
    std::optional<std::vector<std::int64_t>> modes;
};

class FakeWindowServer : public WindowServer {
public:
    std::optional<std::vector<WindowDictionary>> windowInfo() override { return windows; }
    std::optional<std::vector<std::uint32_t>> activeDisplays(std::size_t maximum) override {
        EXPECT_EQ(maximum, 16U);
        std::vector<std::uint32_t> ids(displays.size());
        std::iota(ids.begin(), ids.end(), 0U);
        return answers ? std::optional{ids} : std::nullopt;
    }
    std::optional<std::int64_t> currentModeWidth(std::uint32_t display) override {
        return displays[display].current;
    }
    std::optional<std::vector<std::int64_t>> modeWidths(std::uint32_t display) override {
        return displays[display].modes;
    }

    bool answers = true;
    std::optional<std::vector<WindowDictionary>> windows;
    std::vector<FakeDisplay> displays;
};

TEST(WindowCensus, AsksTheServer) {
    FakeWindowServer server;
    EXPECT_TRUE(WindowCensus::live(server).empty());
    server.windows = {window(1, "A")};
    EXPECT_EQ(WindowCensus::live(server).size(), 1U);

    EXPECT_EQ(WindowCensus::displays(server), (DisplayInfo{0, 0}));
    server.displays = {{2560, {{1280, 5120, 2560}}},
                       {5120, {{5120, 2560}}},
                       {{}, {{5120}}},
                       {2560, {}},
                       {2560, {{}}},
                       {2560, {{1920}}}};
    EXPECT_EQ(WindowCensus::displays(server), (DisplayInfo{6, 2}));
    server.answers = false;
    EXPECT_EQ(WindowCensus::displays(server), (DisplayInfo{0, 0}));
}

} // namespace
} // namespace pacelet
