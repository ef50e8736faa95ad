#include "Hosts/Simulated/Scenarios/Scenarios.h"

namespace pacelet::Simulated::Scenarios {

/// A well-kept machine on which nothing is wrong.
void quiet(MacBuilder& mac) {
    mac.boot(macBookAirM2, days(2.3));
    mac.usualApplications();
    mac.install({"Tidyvault", "app.tidyvault.Tidyvault", 0, 80});
}

} // namespace pacelet::Simulated::Scenarios
