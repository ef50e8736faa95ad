#pragma once

#include "Hosts/Recorded/TapedMachine.h"
#include "Hosts/Simulated/SimulatedMac.h"
#include "PaceletApp/Application/Application.h"
#include "PaceletApp/Scheduler/VirtualScheduler.h"
#include "tools/session/TiledWorkspace.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace pacelet {

/// The whole program on a simulated Mac or a captured machine, in virtual time: nothing passes but
/// in `pass`. It has been started before, so that no first-run sheet is due, and measures from the
/// first `pass` on. What moves arrives at once.
class Session {
public:
    /// Throws `std::invalid_argument` when there is no such scenario.
    explicit Session(std::string_view scenario, std::uint64_t seed = 1);
    /// `catalog` may be nothing: then it could not be loaded. With another system the machine is
    /// the same, and speaks of itself in that one's words; its browsers may need an extension then.
    Session(std::unique_ptr<Simulated::SimulatedMac> mac,
            const std::optional<ProcessCatalog>& catalog,
            OperatingSystem system = OperatingSystem::macOS, BrowserExtension* extension = nullptr);

    /// On a captured machine, which has no `mac`.
    explicit Session(Recorded::Capture capture);

    /// The catalog that stands beside the running program.
    static std::optional<ProcessCatalog> bundledCatalog();

    Simulated::SimulatedMac& mac() { return *mac_; }
    VirtualScheduler& scheduler() { return scheduler_; }
    Application& application() { return *application_; }

    /// Opens the main window, or brings it forward, with this screen on show.
    void open(Screen screen);

    /// Lets virtual time pass, and what it brought reach the window.
    void pass(double seconds);

private:
    void start(const Platform& platform, const std::optional<ProcessCatalog>& catalog);

    std::unique_ptr<Simulated::SimulatedMac> mac_;
    std::unique_ptr<Recorded::Replay> replay_;
    std::unique_ptr<TiledWorkspace> tiledWorkspace_;
    VirtualScheduler scheduler_;
    std::unique_ptr<Application> application_;
};

} // namespace pacelet
