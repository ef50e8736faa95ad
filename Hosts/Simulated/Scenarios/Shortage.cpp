#include "Hosts/Simulated/Scenarios/Scenarios.h"

namespace pacelet::Simulated::Scenarios {

/// Too much for 8 GB: memory pressure is critical, and the swap fills.
void outOfMemory(MacBuilder& mac) {
    mac.boot(macBookAir8GB, days(8.4));
    mac.usualApplications();
    mac.run({"Affinity Photo 2", "com.seriflabs.affinityphoto2", 12, 3900, 2}).quitDelay =
        Seconds{1.2};
    mac.run({"Figma", "com.figma.Desktop", 6, 1400});
    mac.work("kernel_task", {.percent = 31, .swing = 0.3});
    mac.world().vitals.pressureLevel = 4;
    mac.world().vitals.swapUsed = 6 * gibibyte + 430 * mebibyte;
}

/// Hardly room for a download.
void fullDisk(MacBuilder& mac) {
    mac.boot(macBookAir8GB, days(3.2));
    mac.usualApplications();
    mac.install({"Tidyvault", "app.tidyvault.Tidyvault", 0, 80});
    mac.world().vitals.diskFree = 7'840'000'000;
}

/// An old laptop that its owner has outgrown, and thirty days of history that show it.
void intelHistory(MacBuilder& mac) {
    mac.boot(macBookProIntel, days(17.3));
    mac.usualApplications();
    mac.run({"Microsoft Teams", "com.microsoft.teams2", 24, 980});
    mac.work("kernel_task", {.percent = 26, .swing = 0.3});
    mac.world().vitals.pressureLevel = 2;
    mac.world().vitals.swapUsed = 3 * gibibyte + 210 * mebibyte;
    mac.world().vitals.diskFree = 31 * gigabyte;
    PastUsage usage;
    usage.days = 30;
    usage.idleLoad = 22;
    usage.busyLoad = 92;
    usage.busyShare = 0.27;
    usage.pressureShare = 0.41;
    usage.swap = 29 * gibibyte / 10;
    usage.memoryUsed = 71 * gibibyte / 10;
    mac.world().pastUsage = usage;
}

} // namespace pacelet::Simulated::Scenarios
