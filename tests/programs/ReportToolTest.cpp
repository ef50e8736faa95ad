#include "Core/Support/Text.h"
#include "Core/Usage/CauseStore.h"
#include "Hosts/Posix/Shell.h"
#include "programs/pacelet-report/CapturedTable.h"
#include "programs/pacelet-report/Options.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <simdjson.h>

namespace pacelet {
namespace {

using report::Options;

Options parse(const std::vector<std::string_view>& arguments) {
    return report::parseOptions(arguments);
}

TEST(ReportOptions, AreReadStrictly) {
    EXPECT_EQ(parse({}), Options{});
    Options both{"a", "-", Seconds{1.5}, 8, std::nullopt, std::nullopt, true, false};
    EXPECT_EQ(parse({"--ps", "a", "--json", "--seconds", "1.5", "--cores", "8", "--ps", "-"}),
              both);
    EXPECT_EQ(parse({"--ps", "a"}).psFile, "a");
    EXPECT_TRUE(parse({"--help"}).help);
    EXPECT_EQ(parse({"--since", "90m"}).since, Seconds{5400});
    EXPECT_EQ(parse({"--since", "7d"}).since, Seconds{7 * 86400.0});
    EXPECT_EQ(parse({"--scenario", "quiet"}).scenario, "quiet");
    for (const auto& [line] : testing::rows<1>("Tools", "arguments that no report takes")) {
        EXPECT_THROW(parse(splitDroppingEmpty(line, ' ')), report::UsageError) << line;
    }
}

TEST(CapturedTable, ReadsWhatPeopleHave) {
    for (const auto& [header, line, expected] :
         testing::rows<3>("Tools", "lines of captured tables")) {
        const auto table = report::CapturedTable::parse(header + "\n" + line + "\n");
        const auto shown = [](const ProcessSample& sample) {
            return fmt::format("{} {} {} {}", sample.path, sample.cpuTime, sample.rssBytes / 1024,
                               sample.psCPU);
        };
        EXPECT_EQ(table.processes.empty() ? "none" : shown(table.processes.at(0)), expected)
            << line;
    }
    for (const auto& [line, program] :
         testing::rows<2>("Tools", "command lines and their programs")) {
        EXPECT_EQ(report::programOf(line), program);
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

    EXPECT_EQ(text.stdout.find("Memory"), std::string::npos) << "no table tells that";

    const auto json = Shell::run(tool, {"--json", "--ps", fixtures + "mac-indexing.txt", "--ps",
                                        fixtures + "mac-indexing-3s-later.txt", "--seconds", "3"});
    EXPECT_EQ(json.status, 0) << json.stderr;
    EXPECT_NE(json.stdout.find(R"("headline":"Safari is using 100% CPU.")"), std::string::npos)
        << json.stdout;
}

TEST(ReportTool, TellsLinuxTablesApart) {
    const testing::TemporaryFolder folder;
    folder.write("table", "USER PID %CPU %MEM VSZ RSS TTY STAT START TIME COMMAND\n"
                          "root 1 0.1 0.1 9 900 ? Ss 09:00 0:04 /sbin/init splash\n"
                          "root 31 0.2 0.0 0 0 ? S 09:00 0:01 [watchdogd]\n"
                          "root 40 95.0 0.1 9 900 ? R 09:00 1:00 /usr/sbin/cron -f\n");
    const auto output = Shell::run(tool, {"--ps", (folder.path() / "table").string()});
    EXPECT_NE(output.stdout.find("Kernel watchdog"), std::string::npos) << output.stdout;
    EXPECT_EQ(output.stdout.find("mac"), std::string::npos) << output.stdout;
    EXPECT_EQ(output.stdout.find("Mac"), std::string::npos) << output.stdout;
}

/// What the shell makes of `command`, in which $R is the tool.
Shell::Output shell(const std::string& command) {
    return Shell::run("/bin/sh", {"-c", "R=" + tool + "; " + command});
}

TEST(ReportTool, StandsOddDoors) {
    const testing::TemporaryFolder folder;
    const std::string line = "2 1 0 root 0:01.00 10 91.0 /bin/b";
    folder.write("bad", "1 1 0 root 0:01.00 9223372036854775807 1.0 /bin/a\n" + line + "\x1B\xFF");
    folder.write("shares",
                 "UID PID PPID C STIME TTY TIME CMD\n501 7 1 50 9:12AM ?? 0:04.00 -zsh\n");
    const std::string go =
        "cd " + folder.path().string() + "; : > empty; mkfifo pipe 2>/dev/null; ";
    for (const char* reading :
         {"$R --ps empty", "$R --ps pipe", "$R --ps /dev/null", "$R --ps /dev/zero", "$R --ps .",
          "$R --ps shares", "$R --ps - <&-", "$R --ps bad --ps empty --seconds 3",
          "$R --ps /no/such/file", "$R --replay bad", "$R --replay pipe", "$R --looks 3",
          "$R --frobnicate", "$R --scenario no-such"}) {
        const auto output = shell(go + reading);
        EXPECT_EQ(output.status, 2) << reading;
        EXPECT_EQ(output.stdout, "") << reading;
        EXPECT_EQ(std::ranges::count(output.stderr, '\n'), 1) << reading << output.stderr;
    }
    for (const char* writing : {"$R --ps bad >&-", "$R --ps bad >/dev/full",
                                "$R --help >/dev/full 2>&-", "$R --help >/dev/full 2>/dev/full"}) {
        EXPECT_EQ(shell(go + writing).status, 1) << writing;
    }
    for (const char* piped :
         {"cat bad | $R --json --ps -", "(sleep 0.2; cat bad > pipe) & $R --json --ps pipe",
          "iconv -f latin1 -t utf-16 bad | $R --json --cores 4 --ps /dev/stdin"}) {
        const auto output = shell(go + piped);
        EXPECT_EQ(output.status, 0) << output.stderr;
        simdjson::dom::parser parser;
        simdjson::dom::element answer;
        ASSERT_FALSE(parser.parse(output.stdout).get(answer)) << output.stdout;
        double percent = 0;
        EXPECT_FALSE(answer["groups"].at(0)["cpuPercent"].get(percent));
        EXPECT_EQ(percent, 91);
        const bool tellsCores = output.stdout.find("coreCount") != std::string::npos;
        EXPECT_EQ(tellsCores, std::string_view{piped}.find("--cores") != std::string_view::npos);
    }
}

TEST(ReportTool, TellsThePast) {
    const testing::TemporaryFolder folder;
    const auto asked = [&](const std::string& how) {
        return shell("XDG_DATA_HOME=" + folder.path().string() + " TZ=UTC $R --since " + how);
    };
    EXPECT_EQ(asked("24h").stdout,
              "Pacelet noted nothing that slowed your computer in the last 24 hours.\n");
    const auto now = static_cast<std::int64_t>(std::time(nullptr) / 60);
    const CauseStore store{folder.path() / "Pacelet"};
    for (const std::int64_t ago : {100, 99, 30, 20 * 1440}) {
        store.append({now - ago,
                      {{{FindingKind::spotlight, "", ""}, Severity::low, 60, 70, 80},
                       {{FindingKind::cpuHog, "", "make"}, Severity::high, 20, 300, 400}}});
    }
    const auto text = asked("2h").stdout;
    EXPECT_NE(text.find("in the last 2 hours:\n\nSpotlight  3 min, 2 times, last "), text.npos)
        << text;
    EXPECT_NE(text.find("make  1 min, 2 times"), text.npos) << text;
    const auto json = asked("30d --json").stdout;
    EXPECT_NE(json.find(R"("name":"make","id":"","severity":"high","seconds":80,"times":3)"),
              json.npos)
        << json;
}

TEST(ReportTool, NeedsItsCatalog) {
    const testing::TemporaryFolder folder;
    folder.write("Pacelet_Core.bundle/processes.json", "[{}]");
    std::filesystem::copy_file(tool, folder.path() / "pacelet-report");
    const auto output = Shell::run(folder.path() / "pacelet-report", {});
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.stderr, "Pacelet couldn't load its process list. Reinstall Pacelet.\n");
}

TEST(ReportTool, AnswersLiveAndReplaysWhatItSaw) {
    const testing::TemporaryFolder folder;
    const std::string file = folder.path() / "capture";
    const auto live = Shell::run(tool, {"--json", "--capture", file, "--looks", "2"});
    EXPECT_EQ(live.status, 0) << live.stderr;
    EXPECT_NE(live.stdout.find(R"("groups":[{)"), std::string::npos);
    EXPECT_EQ(Shell::run(tool, {"--json", "--replay", file}).stdout, live.stdout);
}

} // namespace
} // namespace pacelet
