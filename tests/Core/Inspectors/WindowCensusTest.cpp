#include "Core/Inspectors/WindowCensus.h"

#include <gmock/gmock.h>
#include <map>
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
    const std::map<std::string_view, WindowDictionary> skipped{
        {"a higher layer", with("kCGWindowLayer", std::int64_t{25})},
        {"a layer that is no integer", with("kCGWindowLayer", 0.0)},
        {"a layer that is a truth value", with("kCGWindowLayer", false)},
        {"no layer", without("kCGWindowLayer")},
        {"off the screen", with("kCGWindowIsOnscreen", false)},
        {"an owner in words", with("kCGWindowOwnerPID", "1")},
        {"an owner that is a truth value", with("kCGWindowOwnerPID", true)},
        {"an owner past 32 bits", with("kCGWindowOwnerPID", std::int64_t{1} << 31)},
        {"half an owner", with("kCGWindowOwnerPID", 1.5)},
        {"an owner past all integers", with("kCGWindowOwnerPID", 1e300)},
        {"no owner", without("kCGWindowOwnerPID")},
        {"a name that is a number", with("kCGWindowOwnerName", std::int64_t{1})},
        {"no name", without("kCGWindowOwnerName")}};
    for (const auto& [about, each] : skipped) {
        EXPECT_EQ(WindowCensus::count({each, window(7, "B")}).size(), 1U) << about;
    }
    const std::map<std::string_view, WindowDictionary> counted{
        {"nothing said of the screen", without("kCGWindowIsOnscreen")},
        {"a number said of the screen", with("kCGWindowIsOnscreen", std::int64_t{0})},
        {"an owner that is a whole number", with("kCGWindowOwnerPID", 1.0)}};
    for (const auto& [about, each] : counted) {
        EXPECT_THAT(WindowCensus::count({each}), ElementsAre(WindowCount{"A", 1, 1})) << about;
    }
    for (const std::int64_t pid : {std::int64_t{INT32_MIN}, std::int64_t{INT32_MAX}}) {
        for (const WindowValue& value : {WindowValue{pid}, WindowValue{static_cast<double>(pid)}}) {
            EXPECT_EQ(WindowCensus::count({with("kCGWindowOwnerPID", value)}).size(), 1U) << pid;
        }
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
