#pragma once

#include "Core/Platform/Platform.h"
#include "Hosts/Simulated/FolderTree.h"
#include "Hosts/Simulated/Machine.h"
#include "Hosts/Simulated/Services/MacKernel.h"
#include "Hosts/Simulated/Services/MacNetwork.h"
#include "Hosts/Simulated/Services/MacServices.h"
#include "Hosts/Simulated/Services/MacWorkspace.h"
#include "Hosts/Simulated/Tools/MacTools.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Simulated {

/// A whole Mac in virtual time behind the interfaces of the platform. The same world and the same
/// calls give the same answers, byte for byte. Its clocks stand still until `machine.advance`.
class SimulatedMac {
public:
    /// Throws `std::system_error` when its folder tree cannot be written.
    explicit SimulatedMac(World world);

    /// References into this object; it has to outlive them.
    Platform platform();

    /// The machine sleeps for this long: its observers are told, its clocks go on.
    void sleepFor(Seconds span);

    Machine machine;
    MacTools tools{machine};
    MacKernel kernel{machine};
    MacWorkspace workspace{machine};
    MacNetwork network{machine};
    MacWindowServer windowServer{machine};
    MacLoginItems loginItems{machine};
    MacPreferences preferences{machine};
    MacLog log{machine};

    /// Gives the large folders their full size on the real disk. Throws `std::system_error`.
    void fillLargeFolders();

private:
    FolderTree folders_;
};

/// The names of all scenarios, the most ordinary one first.
std::vector<std::string_view> scenarioNames();

/// The machine of this scenario, or null when there is none of this name. The seed decides what the
/// scenario leaves open. Throws `std::system_error` as `SimulatedMac` does.
std::unique_ptr<SimulatedMac> makeScenario(std::string_view name, std::uint64_t seed = 1);

} // namespace pacelet::Simulated
