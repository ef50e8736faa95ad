#include "Core/Sampling/Shell.h"
#include "Core/Support/Text.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"
#include "tools/pacelet-report/Options.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
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
    for (const auto& [line] : testing::rows<1>("Tools", "arguments that no report takes")) {
        EXPECT_THROW(parse(splitDroppingEmpty(line, ' ')), report::UsageError) << line;
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

TEST(ReportTool, SaysInOneLineWhatIsWrong) {
    const auto lines = [](const std::string& text) {
        return std::count(text.begin(), text.end(), '\n');
    };
    for (const char* arguments :
         {"--ps /no/such/file", "--ps /", "--frobnicate", "--scenario no-such"}) {
        const auto words = splitDroppingEmpty(arguments, ' ');
        const auto output = Shell::run(tool, {words.begin(), words.end()});
        EXPECT_EQ(output.status, 2);
        EXPECT_EQ(lines(output.stderr), 1) << output.stderr;
        EXPECT_EQ(output.stdout, "");
    }
}

TEST(ReportTool, NeedsItsCatalog) {
    const testing::TemporaryFolder folder;
    folder.write("Pacelet_Core.bundle/processes.json", "[{}]");
    std::filesystem::copy_file(tool, folder.path() / "pacelet-report");
    const auto output = Shell::run(folder.path() / "pacelet-report", {});
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.stderr, "Pacelet couldn't load its process list. Reinstall Pacelet.\n");
}

TEST(ReportTool, AnswersLive) {
    const auto output = Shell::run(tool, {"--json"});
    EXPECT_EQ(output.status, 0) << output.stderr;
    EXPECT_NE(output.stdout.find(R"("groups":[{)"), std::string::npos);
}

} // namespace
} // namespace pacelet
