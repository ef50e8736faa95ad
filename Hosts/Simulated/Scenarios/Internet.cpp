#include "Hosts/Simulated/Scenarios/Scenarios.h"

namespace pacelet::Simulated::Scenarios {

/// Wi-Fi is on, but in no network.
void offline(MacBuilder& mac) {
    mac.boot(macBookAirM2, days(0.9));
    mac.usualApplications();
    mac.world().network.wifi = WiFi{0, 0, 0, std::nullopt};
    mac.world().network.path = {};
}

/// A hotel at night: far from the router, a thin line, and a backup that fills what there is of it.
void slowLine(MacBuilder& mac) {
    mac.boot(macBookAirM2, days(1.8));
    mac.usualApplications();
    mac.run({"Dropbox", "com.getdropbox.dropbox", 6, 310, 0, "/Applications/",
             ActivationPolicy::accessory});
    mac.transfer("Dropbox", 21'000, 1'450'000);
    mac.world().network.wifi = WiFi{-74, -89, 58.5, 1};
    mac.world().network.line = {6.4e6, 11.8e6, 142, 68};
}

} // namespace pacelet::Simulated::Scenarios
