#include "Core/Usage/MacInfo.h"

#include "tests/Support/FakeKernel.h"
#include "tests/Support/FakeToolRunner.h"
#include "tests/Support/Table.h"

#include <array>
#include <gtest/gtest.h>

namespace pacelet {
namespace {

constexpr std::int64_t gib = std::int64_t{1} << 30;
constexpr std::int64_t installed = 5 * gib;

TEST(MacInfo, ReadsTheReportOfTheTool) {
    for (const auto& [members, name, chip, gigabytes, silicon] :
         testing::rows<5>("Usage", "machine as its tool tells it")) {
        EXPECT_EQ(
            MacInfo::parse(R"({"SPHardwareDataType":[{)" + members + R"(},{"x":1}]})", installed),
            (MacInfo{name, chip, std::stoi(gigabytes) * gib, silicon == "Apple"}))
            << members;
    }
    EXPECT_EQ(MacInfo::parse("", installed), std::nullopt);
    for (const auto& [json] : testing::rows<1>("Usage", "reports of no machine")) {
        EXPECT_EQ(MacInfo::parse(json, installed), std::nullopt) << json;
    }
    for (const auto& [text, bytes] : testing::rows<2>("Usage", "sizes of memory")) {
        EXPECT_EQ(testing::shown(MacInfo::parseSize(text)), bytes) << text;
    }
}

TEST(MacInfo, FallsBackToTheKernel) {
    testing::FakeKernel kernel;
    kernel.memory = installed;
    testing::FakeToolRunner tools;
    tools.failToLaunch();
    EXPECT_EQ(MacInfo::read(tools, kernel), (MacInfo{"", "Intel", installed, false}));
    ASSERT_EQ(tools.calls.size(), 1U);
    EXPECT_EQ(tools.calls[0], (testing::FakeToolRunner::Call{"/usr/sbin/system_profiler",
                                                             {"SPHardwareDataType", "-json"}}));

    kernel.set("hw.optional.arm64", std::int32_t{1});
    kernel.set("hw.model", std::array<char, 8>{'M', 'a', 'c', '\xFF', '1', '\0', 'x', 'y'});
    tools.answer = [](const auto&) { return Shell::Output{0, "no JSON", ""}; };
    EXPECT_EQ(MacInfo::read(tools, kernel), (MacInfo{"Mac\xEF\xBF\xBD"
                                                     "1",
                                                     "Apple silicon", installed, true}));
    kernel.set("hw.model", std::array<char, 64>{'M'});
    kernel.set("hw.optional.arm64", std::int32_t{2});
    EXPECT_EQ(MacInfo::read(tools, kernel), (MacInfo{"M", "Intel", installed, false}));
    for (const auto& [system, isMac] : {std::pair{'D', false}, {'\0', true}}) {
        kernel.set("kern.ostype", std::array<char, 2>{system});
        EXPECT_EQ(MacInfo::read(tools, kernel).isMac, isMac);
    }
    kernel.set("kern.ostype", std::array<char, 7>{'D', 'a', 'r', 'w', 'i', 'n', '\0'});
    EXPECT_TRUE(MacInfo::read(tools, kernel).isMac);
    kernel.set("hw.model", std::array<char, 65>{'M'});
    EXPECT_EQ(MacInfo::read(tools, kernel).name, "");

    tools.answer = [](const auto&) {
        return Shell::Output{9, R"({"SPHardwareDataType":[{"machine_name":"iMac"}]})", ""};
    };
    EXPECT_EQ(MacInfo::read(tools, kernel).name, "iMac") << "the status is not looked at";
}

} // namespace
} // namespace pacelet
