#include "Hosts/Simulated/Scenarios/Scenarios.h"

namespace pacelet::Simulated::Scenarios {

/// macOS was updated, and the new index will be done in three quarters of an hour.
void spotlightAfterUpdate(MacBuilder& mac) {
    mac.boot(macBookAirM2, hours(0.4));
    mac.usualApplications();
    const Seconds done = hours(0.75);
    mac.work("mds_stores", {.percent = 92, .swing = 0.15, .until = done, .percentAfter = 1});
    mac.work("mds", {.percent = 24, .swing = 0.3, .until = done, .percentAfter = 0.8});
    mac.work("mdworker_shared", {.percent = 150, .swing = 0.2, .until = done, .percentAfter = 1});
    mac.work("photoanalysisd", {.percent = 6, .swing = 0.4, .until = done, .percentAfter = 0.2});
}

/// The index is broken: it is worked on for ever, over folders that change all the time.
void spotlightStuck(MacBuilder& mac) {
    mac.boot(macBookAirM2, days(6.2));
    mac.usualApplications();
    mac.run({"Xcode", "com.apple.dt.Xcode", 8, 900, 3});
    mac.work("mds_stores", {.percent = 99, .swing = 0.06});
    mac.work("corespotlightd", {.percent = 34, .swing = 0.2});
    mac.work("mdworker_shared", {.percent = 12, .swing = 0.5});
    mac.world().largeFolders = {{"Library/Developer/Xcode/DerivedData", 16 * gigabyte / 10},
                                {"Library/Containers/com.docker.docker", 11 * gigabyte / 10}};
}

} // namespace pacelet::Simulated::Scenarios
