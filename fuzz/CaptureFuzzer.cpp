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

#include <cstddef>
#include <cstdint>

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
    const std::vector<MinuteRecord> week(6000, MinuteRecord{.pressure = 2, .n = 1});
    UpgradeAdvisor::evaluate(week, MacInfo::read(machine.tools, machine.kernel).memoryBytes, 0.5);
}

/// All looks at a captured machine, as the report and the screens take them.
void replayWhole(Recorded::Capture capture) {
    static const ProcessCatalog ofAll{CatalogFile::read(PACELET_RESOURCES "/processes.json")};
    Recorded::Replay replay{std::move(capture)};
    const Platform machine = replay.platform();
    const ProcessCatalog catalog = ofAll.on(machine.system, machine.abilities);
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

} // namespace

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
        replayWhole(std::move(capture));
    } catch (const CaptureError&) {
        // One line for the user.
    }
    return 0;
}
