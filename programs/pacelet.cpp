// Tells in plain English why this machine is slow right now, in a window.

#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Core/Support/StandardStreams.h"
#include "PaceletApp/Application/Program.h"
#include "PaceletApp/Application/SingleInstance.h"
#include "PaceletApp/Version.h"
#include "programs/LiveDesktop.h"
#include "programs/pacelet-report/LiveLook.h"

#include <fmt/format.h>

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace pacelet;

constexpr int statusUnavailable = 1;

/// One program a user: a later start only brings the window of the first one forward.
int comeForward(const SingleInstance& running) {
    if (running.askToShow(Activation::ofEnvironment())) {
        return 0;
    }
    StandardStreams::complain("Pacelet runs already, but doesn't answer.");
    return statusUnavailable;
}

int runInDesktop(LiveDesktop desktop, bool isHidden, int argc, char** argv) {
    SingleInstance instance{SingleInstance::standardFolders()};
    if (!instance.isFirst()) {
        return isHidden ? 0 : comeForward(instance);
    }
    if (!instance.isKnown()) {
        StandardStreams::complain("Pacelet has no folder of its own to see whether it runs "
                                  "already.");
    }
    desktop.tellQt();
    Program program{argc, argv, isHidden ? Program::Beginning::hidden : Program::Beginning::shown};
    desktop.isConnected();
    DesktopHost host;
    ProgramSurroundings surroundings = host.surroundings();
    surroundings.instance = &instance;
    return program.run(host.platform(), surroundings);
}

/// The exit status of a program whose work is to print `text`.
int printed(std::string_view text) {
    if (StandardStreams::print(text)) {
        return 0;
    }
    StandardStreams::complain("pacelet: the answer couldn't be written");
    return statusUnavailable;
}

int printAnswer() {
    try {
        LiveHost host;
        const Platform machine = host.platform();
        const ProcessCatalog catalog =
            ProcessCatalog::bundled(resourcesOf(ownProgram().parent_path()))
                .on(machine.system, machine.abilities);
        const report::Look look = report::lookAtMachine(machine, catalog);
        const std::string answer = Report::render(
            report::diagnose(look, catalog), look.reading.groups, catalog, look.reading.signals);
        return printed(
            fmt::format("{}\n\nThere is no display here. {}\n", answer, LiveDesktop::advice));
    } catch (const CatalogError&) {
        StandardStreams::complain(catalogMissing);
        return statusUnavailable;
    }
}

/// What the first argument asks for instead of the window. Others are for the windowing system, or
/// come from a session manager.
std::optional<std::string> answerTo(std::string_view argument) {
    if (argument == "--version") {
        return fmt::format("Pacelet {}\n", paceletVersion);
    }
    if (argument == "--help") {
        return fmt::format("Usage: pacelet [--help | --version | --hidden]\n\n"
                           "Tells in plain English why this machine is slow right now: in a "
                           "window, or as text\n"
                           "where there is no display. See also pacelet-report --help.\n\n"
                           "  --hidden  start in the {} alone; start Pacelet again to see its "
                           "window\n",
                           LiveDesktop::trayName);
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv) {
    StandardStreams::secure();
    try {
        if (const auto answer = argc > 1 ? answerTo(argv[1]) : std::nullopt) {
            return printed(*answer);
        }
        auto desktop = LiveDesktop::find();
        const bool isHidden = argc > 1 && std::string_view{argv[1]} == "--hidden";
        return desktop ? runInDesktop(*std::move(desktop), isHidden, argc, argv) : printAnswer();
    } catch (const std::exception& error) {
        StandardStreams::complain(std::string{"pacelet: "} + error.what());
        return statusUnavailable;
    }
}
