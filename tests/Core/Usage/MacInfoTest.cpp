#include "Core/Usage/MacInfo.h"

#include "tests/Support/FakeKernel.h"
#include "tests/Support/FakeToolRunner.h"

#include <array>
#include <gtest/gtest.h>

namespace pacelet {
namespace {

constexpr std::int64_t gigabyte = std::int64_t{1} << 30;
constexpr std::int64_t installed = 5 * gigabyte;

std::optional<MacInfo> parse(const std::string& machine) {
    return MacInfo::parse(R"({"SPHardwareDataType":[)" + machine + "]}", installed);
}

TEST(MacInfo, ReadsTheReportOfTheTool) {
    EXPECT_EQ(parse(R"({"machine_name":"MacBook Air","chip_type":"Apple M2",
                        "physical_memory":"16 GB","cpu_type":"ignored"},{"machine_name":"b"})"),
              (MacInfo{"MacBook Air", "Apple M2", 16 * gigabyte, true}));
    EXPECT_EQ(parse(R"({"machine_name":"","chip_type":"Intel Core i5"})"),
              (MacInfo{"", "Intel Core i5", installed, false}));
    EXPECT_EQ(parse(R"({"machine_name":"iMac","chip_type":7,"cpu_type":"Apple M9",
                        "physical_memory":"16 gb"})"),
              (MacInfo{"iMac", "Apple M9", installed, false}))
        << "the older key makes no Apple silicon";
    EXPECT_EQ(parse(R"({"machine_name":"iMac","physical_memory":16})"),
              (MacInfo{"iMac", "Unknown chip", installed, false}));
}

TEST(MacInfo, RefusesWhatDescribesNoMachine) {
    for (const char* machine : {"", "{}", R"({"machine_name":7})", R"("iMac")",
                                R"({"machine_name":"iMac"},7)", R"({"machine_name":"iMac")"}) {
        EXPECT_EQ(parse(machine), std::nullopt) << machine;
    }
    for (const char* json : {"", "[]", "{}", R"({"SPHardwareDataType":{"machine_name":"iMac"}})",
                             R"([{"SPHardwareDataType":[{"machine_name":"iMac"}]}])", "\xFF"}) {
        EXPECT_EQ(MacInfo::parse(json, installed), std::nullopt) << json;
    }
}

TEST(MacInfo, ParsesSizes) {
    struct Row {
        const char* text;
        std::optional<std::int64_t> bytes;
    };
    for (const Row& row : {Row{"16 GB", 16 * gigabyte},
                           {"1 TB", 1024 * gigabyte},
                           {"  512   MB ", gigabyte / 2},
                           {"-1 GB", -gigabyte},
                           {"+2 GB", 2 * gigabyte},
                           {"17179869184 GB", 0}, // wraps around
                           {"16GB", {}},
                           {"16 gb", {}},
                           {"1.5 GB", {}},
                           {"16 KB", {}},
                           {"16", {}},
                           {"", {}},
                           {"16 GB x", {}},
                           {"16\tGB", {}},
                           {"9223372036854775808 GB", {}}}) {
        EXPECT_EQ(MacInfo::parseSize(row.text), row.bytes) << row.text;
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
    kernel.set("hw.model", std::array<char, 65>{'M'});
    EXPECT_EQ(MacInfo::read(tools, kernel).name, "");

    tools.answer = [](const auto&) {
        return Shell::Output{9, R"({"SPHardwareDataType":[{"machine_name":"iMac"}]})", ""};
    };
    EXPECT_EQ(MacInfo::read(tools, kernel).name, "iMac") << "the status is not looked at";
}

} // namespace
} // namespace pacelet
