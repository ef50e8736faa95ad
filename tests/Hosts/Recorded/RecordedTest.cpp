#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Hosts/Recorded/TapedMachine.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "programs/pacelet-report/Watch.h"

#include <gtest/gtest.h>
#include <random>

namespace pacelet {
namespace {

using namespace Recorded;

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
    EXPECT_THROW(replay.platform().tools.run("/usr/bin/never", {}), LaunchError);
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
             [](Capture& it) { std::swap(it.answers["ps"][0], it.answers["ps"][1]); }}) {
        Capture spoilt = capture;
        spoil(spoilt);
        EXPECT_THROW(CaptureFile::parse(Wire::encode(spoilt)), CaptureError);
    }
}

TEST(Disguise, HidesPeopleAndNothingElse) {
    Disguise disguise{"/home/ann", 1000, OperatingSystem::linuxDesktop};
    EXPECT_EQ(disguise.hideTable("  7 1 1000 ann      0:01.00 10 1.0 /home/ann/bin/a b\n"
                                 "  8 1    0 root     0:01.00 10 1.0 /usr/bin/ann\n"
                                 "  9 1 1001 bob      0:01.00 10 1.0 /media/bob/x\n"
                                 "torn\n"),
              "  7 1 1000 user     0:01.00 10 1.0 /home/user/bin/a b\n"
              "  8 1    0 root     0:01.00 10 1.0 /usr/bin/ann\n"
              "  9 1 1001 user-2   0:01.00 10 1.0 /media/user-2/x\n");
    EXPECT_EQ(disguise.hideCommandLines("  7 10 /opt/a b --type=renderer --extension-process -k\n"
                                        "  9 10 /opt/secret word\n"),
              "    7     10 /opt/a b --extension-process\n");
    for (const char* path : {"/home/ann", "/home/annex/x", "/var/home/eve:/home/bob/y",
                             "/media/cdrom", "HOME=/home/ann", "/Users/Shared/z"}) {
        const std::string hidden = disguise.hide(path);
        EXPECT_EQ(disguise.reveal(hidden), path) << hidden;
        for (const char* name : {"ann", "eve", "bob"}) {
            EXPECT_EQ(hidden.find(name), hidden.npos) << hidden;
        }
    }
    Disguise elsewhere{"/srv/people/ann", 1000, OperatingSystem::linuxDesktop};
    EXPECT_EQ(elsewhere.hide("/srv/people/ann/a /srv/people/anna"),
              "/home/user/a /srv/people/anna");
    EXPECT_EQ(elsewhere.reveal("/home/user/a"), "/srv/people/ann/a");
}

} // namespace
} // namespace pacelet
