// Tells in plain English why this machine is slow right now, in a window.

#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Hosts/Linux/Desktop/Display.h"
#include "Hosts/Linux/Desktop/Motion.h"
#include "Hosts/Linux/LinuxHost.h"
#include "PaceletApp/Application/Program.h"
#include "PaceletApp/Application/SingleInstance.h"
#include "tools/pacelet-report/LiveLook.h"

#include <fmt/format.h>

#include <cstdio>
#include <exception>

namespace {

using namespace pacelet;

constexpr int statusUnavailable = 1;

/// One program a user: a later start only brings the window of the first one forward.
int comeForward(const SingleInstance& running) {
    if (running.askToShow()) {
        return 0;
    }
    fmt::print(stderr, "Pacelet runs already, but doesn't answer.\n");
    return statusUnavailable;
}

int showWindow(const std::string& display, int argc, char** argv) {
    SingleInstance instance{SingleInstance::standardFolder()};
    if (!instance.isFirst()) {
        return comeForward(instance);
    }
    qputenv("QT_QPA_PLATFORM", display.c_str());
    Program program{argc, argv};
    Linux::LinuxSettings settings;
    settings.postToUI = postToUI;
    Linux::LinuxHost host{settings};
    return program.run(host.platform(), {&instance, [folder = settings.configFolder] {
                                             return Linux::prefersReducedMotion(folder);
                                         }});
}

int printAnswer() {
    try {
        const ProcessCatalog catalog =
            ProcessCatalog::bundled(ResourceLocations::beside(programFolder()));
        Linux::LinuxHost host;
        const report::Look look =
            report::lookAtMachine(host.tools(), host.kernel(), host.clock(), catalog);
        fmt::print("{}\n", Report::render(report::diagnose(look, catalog), look.reading.groups,
                                          catalog, look.reading.signals));
    } catch (const CatalogError&) {
        fmt::print(stderr, "Pacelet couldn't load its process list. Reinstall Pacelet.\n");
        return statusUnavailable;
    }
    fmt::print("\nThere is no display here. Start pacelet in a desktop session to see its window, "
               "or under xvfb-run.\n");
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const auto display = Linux::chooseDisplay();
        return display ? showWindow(*display, argc, argv) : printAnswer();
    } catch (const std::exception& error) {
        fmt::print(stderr, "pacelet: {}\n", error.what());
        return statusUnavailable;
    }
}
