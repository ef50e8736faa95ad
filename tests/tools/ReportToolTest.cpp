#include "Core/Sampling/Shell.h"
#include "tools/pacelet-report/Options.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace pacelet {
namespace {

using report::Options;

Options parse(const std::vector<std::string_view>& arguments) {
    return report::parseOptions(arguments);
}

TEST(ReportOptions, AreReadStrictly) {
    EXPECT_EQ(parse({}), Options{});
    Options both{"a", "b", Seconds{1.5}, std::nullopt, true, false};
    EXPECT_EQ(parse({"--ps", "a", "--json", "--seconds", "1.5", "--ps", "b"}), both);
    EXPECT_EQ(parse({"--ps", "a"}).psFile, "a");
    EXPECT_TRUE(parse({"--help"}).help);
    EXPECT_EQ(parse({"--scenario", "quiet"}).scenario, "quiet");
    const std::vector<std::vector<std::string_view>> bad{
        {"-x"},
        {"table.txt"},
        {"--scenario"},
        {"--scenario", "quiet", "--ps", "a"},
        {"--ps"},
        {"--ps", "a", "--seconds", "3"},
        {"--ps", "a", "--ps", "b"},
        {"--seconds", "3"},
        {"--ps", "a", "--ps", "b", "--seconds", "0"},
        {"--ps", "a", "--ps", "b", "--seconds", "three"},
        {"--ps", "a", "--ps", "b", "--ps", "c", "--seconds", "3"},
    };
    for (const auto& arguments : bad) {
        EXPECT_THROW(parse(arguments), report::UsageError) << arguments.front();
    }
}

const std::string tool = PACELET_BIN_DIR "/pacelet-report";
const std::string fixtures = PACELET_FIXTURES "/ps/";

TEST(ReportTool, AnswersOnCapturedTables) {
    const auto text = Shell::run(tool, {"--ps", fixtures + "mac-indexing.txt"});
    EXPECT_EQ(text.status, 0) << text.stderr;
    EXPECT_TRUE(text.stdout.starts_with("Status: Busy\nCause: Spotlight is doing a lot of work.\n"))
        << text.stdout;
    EXPECT_EQ(text.stdout.find("Also:"), std::string::npos) << "no member is a hog of its own";

    const auto json = Shell::run(tool, {"--json", "--ps", fixtures + "mac-indexing.txt", "--ps",
                                        fixtures + "mac-indexing-3s-later.txt", "--seconds", "3"});
    EXPECT_EQ(json.status, 0) << json.stderr;
    EXPECT_NE(json.stdout.find(R"("headline":"Safari is using 100% CPU.")"), std::string::npos)
        << json.stdout;
}

TEST(ReportTool, AnswersForSimulatedMacs) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"quiet", "Status: Quiet\nCPU "},
        {"spotlight-after-update", "Status: Busy\nCause: Spotlight is doing a lot of work.\n"},
        {"spotlight-stuck", "Status: Struggling\nCause: Spotlight is doing a lot of work.\n"},
        {"full-disk", "Status: Struggling\nCause: Your disk is almost full.\n"},
    };
    for (const auto& [scenario, answer] : cases) {
        const auto output = Shell::run(tool, {"--scenario", scenario});
        EXPECT_EQ(output.status, 0) << output.stderr;
        EXPECT_TRUE(output.stdout.starts_with(answer)) << scenario << '\n' << output.stdout;
    }
}

TEST(ReportTool, SaysInOneLineWhatIsWrong) {
    const auto lines = [](const std::string& text) {
        return std::count(text.begin(), text.end(), '\n');
    };
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--ps", "/no/such/file"},
          {"--ps", "/"},
          {"--frobnicate"},
          {"--scenario", "no-such"}}) {
        const auto output = Shell::run(tool, arguments);
        EXPECT_EQ(output.status, 2);
        EXPECT_EQ(lines(output.stderr), 1) << output.stderr;
        EXPECT_EQ(output.stdout, "");
    }
}

TEST(ReportTool, NeedsItsCatalog) {
    const auto folder =
        std::filesystem::temp_directory_path() / ("pacelet-report-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder / "Pacelet_Core.bundle");
    std::filesystem::copy_file(tool, folder / "pacelet-report");
    std::ofstream{folder / "Pacelet_Core.bundle" / "processes.json"} << "[{}]";
    const auto output = Shell::run(folder / "pacelet-report", {});
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.stderr, "Pacelet couldn't load its process list. Reinstall Pacelet.\n");
    std::filesystem::remove_all(folder);
}

TEST(ReportTool, AnswersLive) {
    const auto output = Shell::run(tool, {"--json"});
    EXPECT_EQ(output.status, 0) << output.stderr;
    EXPECT_NE(output.stdout.find(R"("groups":[{)"), std::string::npos);
}

} // namespace
} // namespace pacelet
