// Tells in plain English why this machine is slow right now, in a window.

#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Hosts/Linux/Desktop/Display.h"
#include "Hosts/Linux/Desktop/Motion.h"
#include "Hosts/Linux/LinuxHost.h"
#include "PaceletApp/Application/Program.h"
#include "PaceletApp/Application/SingleInstance.h"
#include "PaceletApp/Version.h"
#include "tools/pacelet-report/LiveLook.h"

#include <fmt/format.h>

#include <cstdio>
#include <exception>
#include <optional>
#include <string_view>

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

/// What the first argument asks for instead of the window. Others are for the windowing system, or
/// come from a session manager.
std::optional<std::string> answerTo(std::string_view argument) {
    if (argument == "--version") {
        return fmt::format("Pacelet {}\n", paceletVersion);
    }
    if (argument == "--help") {
        return "Usage: pacelet [--help | --version]\n\n"
               "Tells in plain English why this machine is slow right now: in a window, or as "
               "text\n"
               "where there is no display. See also pacelet-report --help.\n";
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (const auto answer = argc > 1 ? answerTo(argv[1]) : std::nullopt) {
            fmt::print("{}", *answer);
            return 0;
        }
        const auto display = Linux::chooseDisplay();
        return display ? showWindow(*display, argc, argv) : printAnswer();
    } catch (const std::exception& error) {
        fmt::print(stderr, "pacelet: {}\n", error.what());
        return statusUnavailable;
    }
}
