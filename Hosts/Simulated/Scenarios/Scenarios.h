#pragma once

#include "Hosts/Simulated/Scenarios/MacBuilder.h"

#include <array>
#include <string_view>

/// The machines that can be simulated, one function each.
namespace pacelet::Simulated::Scenarios {

void quiet(MacBuilder& mac);
void lowPower(MacBuilder& mac);
void freshInstall(MacBuilder& mac);
void spotlightAfterUpdate(MacBuilder& mac);
void spotlightStuck(MacBuilder& mac);
void chromeTabs(MacBuilder& mac);
void virtualMachine(MacBuilder& mac);
void hot(MacBuilder& mac);
void windowServer(MacBuilder& mac);
void stuckApp(MacBuilder& mac);
void outOfMemory(MacBuilder& mac);
void fullDisk(MacBuilder& mac);
void intelHistory(MacBuilder& mac);
void offline(MacBuilder& mac);
void slowLine(MacBuilder& mac);

struct Scenario {
    std::string_view name;
    void (*build)(MacBuilder&);
};

inline constexpr std::array<Scenario, 15> all{{
    {"quiet", quiet},
    {"spotlight-after-update", spotlightAfterUpdate},
    {"spotlight-stuck", spotlightStuck},
    {"chrome-tabs", chromeTabs},
    {"virtual-machine", virtualMachine},
    {"out-of-memory", outOfMemory},
    {"hot", hot},
    {"window-server", windowServer},
    {"full-disk", fullDisk},
    {"low-power", lowPower},
    {"stuck-app", stuckApp},
    {"offline", offline},
    {"slow-line", slowLine},
    {"fresh-install", freshInstall},
    {"intel-history", intelHistory},
}};

} // namespace pacelet::Simulated::Scenarios
