#include "Hosts/Simulated/Scenarios/Scenarios.h"

namespace pacelet::Simulated::Scenarios {

/// A well-kept machine on which nothing is wrong.
void quiet(MacBuilder& mac) {
    mac.boot(macBookAirM2, days(2.3));
    mac.usualApplications();
    mac.install({"Tidyvault", "app.tidyvault.Tidyvault", 0, 80});
}

/// On the train, saving energy.
void lowPower(MacBuilder& mac) {
    mac.boot(macBookAirM2, days(1.1));
    mac.usualApplications();
    mac.world().vitals.lowPower = true;
}

/// Taken out of its box less than an hour ago: no preferences, no history, hardly an application.
void freshInstall(MacBuilder& mac) {
    mac.boot(macMiniM4, hours(0.7));
    mac.run({"Safari", "com.apple.Safari", 1.5, 260});
    mac.run({"Pacelet", "app.pacelet.Pacelet", 0.6, 90});
    mac.world().vitals.diskFree = mac.world().hardware.diskBytes * 92 / 100;
    mac.world().displays = {{1, 3840, {1920, 2560, 3008, 3840}}};
}

} // namespace pacelet::Simulated::Scenarios
