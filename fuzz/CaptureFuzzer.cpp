#include "Core/Diagnosis/InternetDiagnosis.h"
#include "Core/Diagnosis/Report.h"
#include "Core/Inspectors/WindowCensus.h"
#include "Core/Internet/LinkReader.h"
#include "Core/Internet/NetTop.h"
#include "Core/Internet/TrafficByApp.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Core/Support/Precondition.h"
#include "Core/Usage/CauseWatch.h"
#include "Core/Usage/MacInfo.h"
#include "Core/Usage/UpgradeAdvisor.h"
#include "Hosts/Recorded/TapedMachine.h"
#include "Hosts/Recorded/Wire.h"
#include "programs/pacelet-report/JsonReport.h"
#include "programs/pacelet-report/Watch.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fmt/format.h>
#include <iterator>
#include <random>
#include <unistd.h>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

using namespace pacelet;

/// What the screens make of a machine.
void showScreens(const Platform& machine) {
    const auto nobody = [](std::int32_t) -> std::optional<std::string> { return {}; };
    std::vector<NetUsage> traffic;
    try {
        PSProcessSource::launchctlList(machine.tools);
        PSProcessSource::argsListing(machine.tools);
        traffic = NetTop::sample(machine.tools);
    } catch (const LaunchError&) {
        // There was no such tool.
    }
    const auto wifi = LinkReader::wifi(machine.networkLink);
    LinkReader::currentType(machine.networkLink, [&](LinkType link) {
        InternetDiagnosis::run(link, wifi, {}, trafficByApp(traffic, nobody), nobody,
                               machine.abilities);
    });
    WindowCensus::live(machine.windowServer);
    WindowCensus::displays(machine.windowServer);
    static const std::vector<MinuteRecord> week(6000, MinuteRecord{.pressure = 2, .n = 1});
    UpgradeAdvisor::evaluate(week, MacInfo::read(machine.tools, machine.kernel).memoryBytes, 0.5);
}

/// Of this machine, or of the one before when that speaks of itself in the same words.
const ProcessCatalog& catalogOn(const Platform& machine) {
    static const ProcessCatalog ofAll{CatalogFile::read(PACELET_RESOURCES "/processes.json")};
    static HostAbilities abilities = machine.abilities;
    static ProcessCatalog known = ofAll.on(machine.system, machine.abilities);
    if (known.system != machine.system || abilities != machine.abilities) {
        abilities = machine.abilities;
        known = ofAll.on(machine.system, machine.abilities);
    }
    return known;
}

/// All looks at a captured machine, as the report and the screens take them.
void replayWhole(Recorded::Capture capture) {
    Recorded::Replay replay{std::move(capture)};
    const Platform machine = replay.platform();
    const ProcessCatalog& catalog = catalogOn(machine);
    report::Watch watch{machine, catalog};
    CauseWatch causes;
    for (std::size_t look = 0; look < replay.looks(); ++look) {
        replay.show(look);
        report::Look seen;
        try {
            seen = watch.look();
        } catch (const std::exception&) {
            continue; // `ps` failed
        }
        const DiagnosisResult result = report::diagnose(seen, catalog);
        Report::render(result, seen.reading.groups, catalog, seen.reading.signals);
        report::renderJson(result, seen.reading.groups, catalog, seen.reading.signals, {});
        causes.add({}, machine.clock.now());
        showScreens(machine);
    }
}

/// What a file would hold is what it holds, and nobody's file is written over.
void keepInFile(const Recorded::Capture& capture) {
    using namespace Recorded;
    static const std::string path =
        std::filesystem::temp_directory_path() / fmt::format("pacelet-fuzz-{}", ::getpid());
    ::unlink(path.c_str());
    CaptureFile::write(path, capture);
    precondition(CaptureFile::read(path) == capture, "a capture changed in its file");
    try {
        CaptureFile::write(path, capture);
        precondition(false, "a file was written over");
    } catch (const CaptureError&) {
        ::unlink(path.c_str());
    }
    try {
        CaptureFile::read(path);
        precondition(false, "a file was read that is gone");
    } catch (const CaptureError&) {
        return;
    }
}

/// Changes one thing in a capture, which stays one: libFuzzer alone breaks its lengths.
void change(Recorded::Capture& capture, std::minstd_rand& random) {
    const auto any = [&](std::size_t count) { return random() % count; };
    if (capture.answers.empty() || any(8) == 0) {
        capture.looks.push_back({static_cast<double>(any(100'000)),
                                 capture.looks.back().monotonic + static_cast<double>(any(9))});
        return;
    }
    auto& [call, answers] = *std::next(capture.answers.begin(),
                                       static_cast<std::ptrdiff_t>(any(capture.answers.size())));
    std::string value = answers[any(answers.size())].value;
    if (any(4) > 0) {
        const std::size_t size = value.size();
        value.resize(size + 64);
        value.resize(
            LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(value.data()), size, value.size()));
    }
    if (any(3) == 0 && answers.back().look + 1 < capture.looks.size()) {
        answers.push_back({answers.back().look + 1, value});
    } else if (any(6) == 0) {
        capture.answers.erase(std::string{call});
    } else {
        answers[any(answers.size())].value = value;
    }
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    std::minstd_rand random{seed};
    auto capture =
        Recorded::Wire::decode<Recorded::Capture>({reinterpret_cast<const char*>(data), size});
    if (!capture || capture->looks.empty() || random() % 4 == 0) {
        return LLVMFuzzerMutate(data, size, most);
    }
    for (const auto& each : capture->answers) {
        if (each.second.empty()) {
            return LLVMFuzzerMutate(data, size, most);
        }
    }
    change(*capture, random);
    const std::string bytes = Recorded::Wire::encode(*std::move(capture));
    if (bytes.size() > most) {
        return LLVMFuzzerMutate(data, size, most);
    }
    std::copy(bytes.begin(), bytes.end(), data);
    return bytes.size();
}

// Any bytes are refused, or are a capture that comes back unchanged when it is written again, and
// is replayed to its end.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet::Recorded;
    const std::string_view input{reinterpret_cast<const char*>(data), size};
    try {
        CaptureFile::unpack(input);
    } catch (const CaptureError&) {
        // Hardly any input has the right checksum; what stands behind it is tried on its own.
    }
    try {
        Capture capture = CaptureFile::parse(input);
        precondition(CaptureFile::parse(Wire::encode(capture)) == capture, "a capture changed");
        if (size < 1024 && size % 8 == 0) {
            keepInFile(capture);
        }
        replayWhole(std::move(capture));
    } catch (const CaptureError&) {
        // One line for the user.
    }
    return 0;
}
