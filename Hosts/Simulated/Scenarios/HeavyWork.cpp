#include "Hosts/Simulated/Scenarios/Scenarios.h"

namespace pacelet::Simulated::Scenarios {

/// Containers are built in a virtual machine that takes six cores of sixteen.
void virtualMachine(MacBuilder& mac) {
    mac.boot(macBookProM3Max, days(3.6));
    mac.usualApplications();
    const RunningApp docker = mac.run({"Docker", "com.docker.docker", 2, 160});
    mac.help(docker, {"Docker Desktop Helper (Renderer)", 1, 180, 2, "--type=renderer"});
    mac.process(ann,
                "/System/Library/Frameworks/Virtualization.framework/Versions/A/XPCServices/"
                "com.apple.Virtualization.VirtualMachine.xpc/Contents/MacOS/"
                "com.apple.Virtualization.VirtualMachine",
                600, 11 * 1024)
        .application = docker.number;
    mac.work("com.apple.Virtualization.VirtualMachine", {.percent = 600, .swing = 0.04});
    mac.startsByItself({LaunchFolder::systemDaemons, "com.docker.vmnetd",
                        "/Library/PrivilegedHelperTools/com.docker.vmnetd", "", true, true});
    mac.process(root, "/Library/PrivilegedHelperTools/com.docker.vmnetd", 0, 12);
    mac.world().largeFolders = {{"Library/Containers/com.docker.docker", 2 * gigabyte}};
}

/// A film is rendered on a laptop without a fan.
void hot(MacBuilder& mac) {
    mac.boot(macBookAirM2, days(1.7));
    mac.usualApplications();
    mac.run({"Final Cut Pro", "com.apple.FinalCut", 165, 2600, 2});
    mac.work("Final Cut Pro", {.percent = 165, .swing = 0.05});
    mac.work("kernel_task", {.percent = 58, .swing = 0.2});
    mac.world().vitals.thermalState = 2;
}

/// Two displays in scaled modes, and 24 windows all over them.
void windowServer(MacBuilder& mac) {
    mac.boot(macBookAirM2, days(2.9));
    mac.usualApplications();
    mac.run({"Terminal", "com.apple.Terminal", 0.6, 90, 9, "/System/Applications/Utilities/"});
    mac.run({"Preview", "com.apple.Preview", 0.4, 210, 6, "/System/Applications/"});
    mac.work("WindowServer", {.percent = 64, .swing = 0.12});
    mac.world().displays = {{1, 2048, {1280, 1440, 1680, 2048, 2560}},
                            {2, 5120, {2560, 3008, 3840, 5120, 6016}}};
}

/// A program that has hung in the middle of its work. Only a restart will end it.
void stuckApp(MacBuilder& mac) {
    mac.boot(macBookAirM2, days(5.1));
    mac.usualApplications();
    RunningApp& app = mac.run({"Logic Pro", "com.apple.logic10", 101, 1900, 2});
    app.habit = QuitHabit::hangs;
    mac.work("Logic Pro", {.percent = 101, .swing = 0.01});
}

} // namespace pacelet::Simulated::Scenarios
