#include "programs/pacelet-report/RecordedLook.h"

#include "Core/Inspectors/WindowCensus.h"
#include "Core/Internet/LinkReader.h"
#include "Core/Internet/NetTop.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Core/Usage/MacInfo.h"
#include "Hosts/Recorded/TapedMachine.h"
#include "programs/pacelet-report/InputFile.h"
#include "programs/pacelet-report/Watch.h"

#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <future>
#include <memory>
#include <thread>

namespace pacelet::report {

namespace {

/// Asks what the screens ask, so that they find it in the capture.
void survey(const Platform& machine) {
    constexpr std::chrono::seconds patience{2};
    const auto isKnown = std::make_shared<std::promise<void>>();
    LinkReader::currentType(machine.networkLink, [isKnown](LinkType) { isKnown->set_value(); });
    LinkReader::wifi(machine.networkLink);
    machine.networkLink.isExpensive();
    PSProcessSource::argsListing(machine.tools);
    PSProcessSource::launchctlList(machine.tools);
    NetTop::sample(machine.tools);
    MacInfo::read(machine.tools, machine.kernel);
    WindowCensus::live(machine.windowServer);
    WindowCensus::displays(machine.windowServer);
    machine.workspace.runningApplications();
    if (machine.backgroundItems != nullptr) {
        machine.backgroundItems->items();
    }
    isKnown->get_future().wait_for(patience);
}

[[noreturn]] void failWith(const std::string& file, std::string_view trouble) {
    throw FileError{fmt::format("{} {}", file, trouble)};
}

} // namespace

std::string captureNotice(const std::string& file, std::int64_t looks) {
    return fmt::format(
        "{} looks at this machine go to {}: its processes with their programs and figures, memory, "
        "heat, disk space, network traffic by process, applications, windows without their titles, "
        "and what starts by itself. Names and home folders of people are replaced, and command "
        "lines left out. Nothing is sent anywhere.",
        looks, file);
}

Look captureMachine(const Platform& machine, const ProcessCatalog& catalog, const std::string& file,
                    std::int64_t looks) {
    if (std::filesystem::exists(std::filesystem::symlink_status(file))) {
        failWith(file, "is there already; name a new file");
    }
    Recorded::Recorder recorder{machine};
    const Platform recorded = recorder.platform();
    const ProcessCatalog known = catalog.on(recorded.system, recorded.abilities);
    Watch watch{recorded, known};
    Look latest;
    for (std::int64_t count = 0; count < looks; ++count) {
        if (count > 0) {
            std::this_thread::sleep_for(betweenLooks);
        }
        recorder.look();
        latest = watch.look();
        survey(recorded);
    }
    try {
        Recorded::CaptureFile::write(file, recorder.capture());
    } catch (const Recorded::CaptureError& error) {
        failWith(file, error.what());
    }
    return latest;
}

Recorded::Capture openCapture(const std::string& file) {
    try {
        return Recorded::CaptureFile::read(file);
    } catch (const Recorded::CaptureError& error) {
        failWith(file, error.what());
    }
}

Look lookAtCapture(Recorded::Capture capture, const ProcessCatalog& catalog) {
    Recorded::Replay replay{std::move(capture)};
    const Platform machine = replay.platform();
    const ProcessCatalog known = catalog.on(machine.system, machine.abilities);
    Watch watch{machine, known};
    Look latest;
    for (std::size_t look = 0; look < replay.looks(); ++look) {
        replay.show(look);
        latest = watch.look();
    }
    return latest;
}

} // namespace pacelet::report
