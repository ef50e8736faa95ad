#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Core/Support/Text.h"
#include "Core/Usage/MacInfo.h"
#include "Hosts/Recorded/TapedMachine.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "programs/pacelet-report/RecordedLook.h"
#include "programs/pacelet-report/Watch.h"

#include <gtest/gtest.h>
#include <random>

namespace pacelet {
namespace {

using namespace Recorded;
using namespace std::string_literals;

const ProcessCatalog& catalog() {
    static const ProcessCatalog read{CatalogFile::read(PACELET_RESOURCES "/processes.json")};
    return read;
}

std::string answer(report::Watch& watch) {
    const report::Look look = watch.look();
    return Report::render(report::diagnose(look, catalog()), look.reading.groups, catalog(),
                          look.reading.signals);
}

class EveryScenario : public ::testing::TestWithParam<std::string_view> {};

TEST_P(EveryScenario, IsReplayedWordForWord) {
    const auto mac = Simulated::makeScenario(GetParam());
    Recorder recorder{mac->platform()};
    report::Watch recording{recorder.platform(), catalog()};
    const auto twin = Simulated::makeScenario(GetParam());
    report::Watch direct{twin->platform(), catalog()};
    std::mt19937 random{16};
    std::vector<std::string> told;
    for (int look = 0; look < 12; ++look) {
        const Seconds pause{random() % 3 == 0 ? 600.5 : 3.0};
        mac->machine.advance(pause);
        twin->machine.advance(pause);
        recorder.look();
        told.push_back(answer(direct));
        EXPECT_EQ(answer(recording), told.back());
    }
    const Platform recorded = recorder.platform();
    const MacInfo hardware = MacInfo::read(recorded.tools, recorded.kernel);
    const Platform itself = twin->platform();
    EXPECT_EQ(hardware, MacInfo::read(itself.tools, itself.kernel));
    const std::string content = Wire::encode(recorder.capture());
    for (const char* trace : {" ann ", "/ann", "Users/ann"}) {
        EXPECT_EQ(content.find(trace), content.npos) << trace;
    }
    Replay replay{CaptureFile::unpack(CaptureFile::pack(recorder.capture()))};
    report::Watch replayed{replay.platform(), catalog()};
    for (std::size_t look = 0; look < replay.looks(); ++look) {
        replay.show(look);
        EXPECT_EQ(answer(replayed), told[look]) << look;
    }
    const Platform machine = replay.platform();
    EXPECT_EQ(MacInfo::read(machine.tools, machine.kernel), hardware);
    EXPECT_THROW(replay.platform().tools.run("/usr/bin/never", {}), LaunchError);
}

TEST(CapturedDesktops, GiveTheFindingsThatTheyGave) {
    for (const auto& [file, told] : std::initializer_list<std::pair<const char*, const char*>>{
             {"quiet", "Status: Quiet\nCPU 0% · Memory Normal · Heat Normal\n\n"
                       "pacelet-report  0%  3.8 MB  Leave it  — Pacelet\n"
                       "Mousepad  0%  16.2 MB  Safe to quit  — Text editor\n"},
             {"runaway", "Status: Busy\nCause: runaway.py is using 100% CPU.\n"
                         "CPU 50% · Memory Normal · Heat Normal\n\n"
                         "runaway.py  100%  2.6 MB  Review  — Script for python3.11\n"},
             {"compiling", "Status: Busy\nCause: make is using 105% CPU.\n"
                           "CPU 68% · Memory Normal · Heat Normal\n\n"
                           "make  105%  324 KB  Review  — Build tools\n"
                           "cc1plus  26%  151.2 MB  Review  — GCC compiler\n"}}) {
        const report::Look look = report::lookAtCapture(
            report::openCapture(std::string{PACELET_FIXTURES "/captures/"} + file), catalog());
        const ProcessCatalog known = catalog().on(look.system, look.abilities);
        const std::string text = Report::render(report::diagnose(look, known), look.reading.groups,
                                                known, look.reading.signals);
        EXPECT_EQ(text.substr(0, std::string_view{told}.size()), told);
    }
}

TEST(CapturedDesktops, AreRefusedOrReplayedWhateverStandsInThem) {
    const std::string content =
        Wire::encode(CaptureFile::read(PACELET_FIXTURES "/captures/compiling"));
    std::mt19937 random{7};
    int replayed = 0;
    for (int round = 0; round < 400; ++round) {
        std::string changed = content;
        for (int change = 1 + static_cast<int>(random() % 8); change > 0; --change) {
            changed[random() % changed.size()] = "9e-.:\xFF\x7F\0"[random() % 8];
        }
        try {
            report::lookAtCapture(CaptureFile::parse(changed), catalog());
            ++replayed;
        } catch (const std::exception& error) {
            EXPECT_EQ(""s + error.what(), plainText(error.what()));
        }
    }
    EXPECT_GT(replayed, 20);
    EXPECT_LT(replayed, 380);
}

INSTANTIATE_TEST_SUITE_P(Recorded, EveryScenario, ::testing::ValuesIn(Simulated::scenarioNames()));

TEST(CaptureFile, IsWholeOrNone) {
    Capture capture;
    capture.looks = {{1.5e9, 7}, {1.5e9 - 3600, 10}};
    capture.answers["ps"] = {{0, "one"}, {1, std::string(500, 'x')}};
    const std::string file = CaptureFile::pack(capture);
    EXPECT_EQ(CaptureFile::unpack(file), capture);
    for (std::size_t at = 0; at < file.size(); ++at) {
        std::string flipped = file;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x40);
        EXPECT_THROW(CaptureFile::unpack(flipped), CaptureError) << at;
        EXPECT_THROW(CaptureFile::unpack(file.substr(0, at)), CaptureError) << at;
    }
    EXPECT_THROW(CaptureFile::unpack(file + file), CaptureError);
    for (const auto& spoil : std::vector<std::function<void(Capture&)>>{
             [](Capture& it) { it.looks.clear(); }, [](Capture& it) { it.looks[1].monotonic = 6; },
             [](Capture& it) { it.looks[0].wall = std::numeric_limits<double>::infinity(); },
             [](Capture& it) { it.system = static_cast<OperatingSystem>(9); },
             [](Capture& it) { it.answers["none"]; },
             [](Capture& it) { it.answers["ps"][1].look = 2; },
             [](Capture& it) { it.looks[0].wall = it.looks[1].wall + 1e-5; },
             [](Capture& it) { it.looks[1].wall = 1e13; },
             [](Capture& it) { std::swap(it.answers["ps"][0], it.answers["ps"][1]); }}) {
        Capture spoilt = capture;
        spoil(spoilt);
        EXPECT_THROW(CaptureFile::parse(Wire::encode(spoilt)), CaptureError);
    }
}

std::string table(std::string_view time, std::string_view size, std::string_view load) {
    const std::string line = fmt::format("7 1 0 root {} {} {} /a\n", time, size, load);
    return Wire::encode(ToolAnswer{{}, {0, line, {}}});
}

TEST(CaptureFile, IsRefusedWhenItTellsWhatNoMachineAnswers) {
    const std::string ps = "run /bin/ps -axo pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm=";
    using Number = std::optional<std::int64_t>;
    const auto number = [](std::int64_t value) { return Wire::encode(Number{value}); };
    for (const auto& [call, possible, impossible] :
         std::vector<std::tuple<std::string, std::string, std::string>>{
             {ps, table("9:01.5", "10", "1.0"), table("9:01.5", "10", "1e30")},
             {ps, table("-:-", "-", "-"), table("9:01.5", "9223372036854775807", "1.0")},
             {ps, table("1:2:3:4", "10", "1.0"), table("1e300:0", "10", "1.0")},
             {ps, table("0:0", "0", "0"), table("0:-1", "0", "0")},
             {ps, table("0:0", "0", "0"), Wire::encode(ToolAnswer{{}, {0, "\x1B[2J", {}}})},
             {"physFootprint 7", number(0), number(-1)},
             {"physFootprint 7", number(std::int64_t{1} << 44), number(std::int64_t{1} << 45)},
             {"pageSize", Wire::encode(std::int64_t{4096}), Wire::encode(std::int64_t{1} << 40)},
             {"systemUptime", Wire::encode(7.0), Wire::encode(1e300)},
             {"isExpensive", Wire::encode(true), Wire::encode(7)},
             {"volumeCapacities /", Wire::encode(std::optional{VolumeCapacities{7, {}}}),
              Wire::encode(std::optional{VolumeCapacities{7, -7}})},
             {"run /usr/sbin/system_profiler", Wire::encode(ToolAnswer{{}, {0, "-", {}}}),
              Wire::encode(ToolAnswer{
                  {}, {0, R"({"SPHardwareDataType":[{"physical_memory":"9999999 TB"}]})", {}}})}}) {
        Capture capture;
        capture.looks = {{1.5e9, 7}};
        capture.answers[call] = {{0, possible}};
        EXPECT_EQ(CaptureFile::parse(Wire::encode(capture)), capture) << call;
        capture.answers[call] = {{0, impossible}};
        EXPECT_THROW(CaptureFile::parse(Wire::encode(capture)), CaptureError) << call;
    }
}

TEST(Disguise, HidesPeopleAndNothingElse) {
    Disguise disguise{"/home/ann", 1000, OperatingSystem::linuxDesktop};
    const std::string table =
        disguise.hideTable("  7 1 1000 ann      0:01.00 10 1.0 /home/ann/bin/a b\n"
                           "  8 1    0 root     0:01.00 10 1.0 /usr/bin/ann\n"
                           "  9 1 1001 bob      0:01.00 10 1.0 /home/bob/x\n"
                           "torn\n");
    EXPECT_EQ(table, "  7 1 1000 user     0:01.00 10 1.0 /home/user/bin/a b\n"
                     "  8 1    0 root     0:01.00 10 1.0 /usr/bin/ann\n"
                     "  9 1 1001 user-2   0:01.00 10 1.0 /home/user-2/x\n");
    EXPECT_EQ(disguise.hide(table), table);
    EXPECT_EQ(disguise.hideCommandLines("  7 10 /home/ann/bin/a b eve --extension-process -k\n"
                                        "  7 10 ssh eve@desk\n  9 10 /opt/secret word\n"),
              "    7     10 /home/user/bin/a b --extension-process\n    7     10 ssh\n");
    for (const char* path : {"/home/ann", "/home/annex/x", "/var/home/eve:/home/bob/y",
                             "/media/bob/x", "/media/cdrom", "HOME=/home/ann", "/Users/Shared/z"}) {
        const std::string hidden = disguise.hide(path);
        EXPECT_EQ(disguise.reveal(hidden), path) << hidden;
        for (const char* name : {"ann", "eve", "bob"}) {
            EXPECT_EQ(hidden.find(name), hidden.npos) << hidden;
        }
    }
    EXPECT_EQ(disguise.hide("\x1B[1m \xFF"), "?[1m \xEF\xBF\xBD");
    for (const char* home : {"/srv/people/ann", "/root"}) {
        Disguise elsewhere{home, 0, OperatingSystem::linuxDesktop};
        const std::string file = std::string{home} + "/a";
        EXPECT_EQ(elsewhere.hide(file + " " + home + "a"), "/home/user/a " + (home + "a"s));
        EXPECT_EQ(elsewhere.reveal("/home/user/a"), file);
    }
    EXPECT_EQ(Disguise::hideHardware(R"({"SPHardwareDataType": [{"machine_name": "iMac",
              "serial_number": "C02", "physical_memory": "8 GB", "platform_UUID": "1-2"}]})"),
              R"({"SPHardwareDataType":[{"machine_name":"iMac","physical_memory":"8 GB"}]})"
              "\n");
}

} // namespace
} // namespace pacelet
