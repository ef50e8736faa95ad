#pragma once

#include "Hosts/Recorded/TapedMachine.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Scheduler/VirtualScheduler.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace pacelet {

/// The whole program on a simulated Mac or on a captured machine, in virtual time: nothing passes
/// but in `pass`. It has been started before, so that no first-run sheet is due, and measures from
/// the first `pass` on. What moves arrives at once.
class Session {
public:
    /// On the scenario, or on the machine of the file with a capture. Throws
    /// `std::invalid_argument` when there is neither, and `Recorded::CaptureError` for any other
    /// file.
    explicit Session(std::string_view machine, std::uint64_t seed = 1);
    /// `catalog` may be nothing: then it could not be loaded. With another system the machine is
    /// the same, and speaks of itself in that one's words; its browsers may need an extension then.
    Session(std::unique_ptr<Simulated::SimulatedMac> mac, std::optional<ProcessCatalog> catalog,
            OperatingSystem system = OperatingSystem::macOS, BrowserExtension* extension = nullptr);

    /// The catalog that stands beside the running program.
    static std::optional<ProcessCatalog> bundledCatalog();

    /// Not on a captured machine.
    Simulated::SimulatedMac& mac() { return *mac_; }
    VirtualScheduler& scheduler() { return *scheduler_; }
    Application& application() { return *application_; }

    /// Opens the main window, or brings it forward, with this screen on show.
    void open(Screen screen);

    /// Lets virtual time pass, and what it brought reach the window.
    void pass(double seconds);

private:
    void replay(Recorded::Capture capture);
    void start(const Platform& platform, std::optional<ProcessCatalog> catalog);

    std::unique_ptr<Simulated::SimulatedMac> mac_;
    std::unique_ptr<Recorded::Replay> replay_;
    std::unique_ptr<Workspace> tiledWorkspace_;
    std::unique_ptr<VirtualScheduler> scheduler_;
    std::unique_ptr<Application> application_;
};

} // namespace pacelet
