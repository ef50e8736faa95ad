// Prints why this machine is slow, as text: the program's answer without its window.

#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Core/Usage/CauseStore.h"
#include "programs/LiveHost.h"
#include "programs/pacelet-report/Answer.h"
#include "programs/pacelet-report/InputFile.h"
#include "programs/pacelet-report/JsonReport.h"
#include "programs/pacelet-report/LiveLook.h"
#include "programs/pacelet-report/Options.h"
#include "programs/pacelet-report/PastReport.h"
#include "programs/pacelet-report/RecordedLook.h"
#include "programs/pacelet-report/ScenarioLook.h"
#include "programs/pacelet-report/TableLook.h"
#include "programs/pacelet-report/WhyReport.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

using namespace pacelet;

constexpr int statusUnavailable = 1;
constexpr int statusUsage = 2;

/// Writes what it can: nobody is left to be told when even this fails.
void complain(std::string_view message) {
    const std::string line = fmt::format("pacelet-report: {}\n", message);
    std::fwrite(line.data(), 1, line.size(), stderr);
}

int print(std::string_view text) {
    const bool isWritten =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    if (!isWritten) {
        complain("couldn't write the answer: " + std::generic_category().message(errno));
    }
    return isWritten ? 0 : statusUnavailable;
}

std::string answer(const report::Options& options, const report::Look& look,
                   const ProcessCatalog& catalog) {
    const DiagnosisResult result = report::diagnose(look, catalog);
    const auto render = options.json ? report::renderJson : Report::render;
    return render(result, look.reading.groups, catalog, look.reading.signals, look.known) + '\n';
}

std::string answerLive(const report::Options& options, const ProcessCatalog& ofAll) {
    LiveHost host;
    const Platform machine = host.platform();
    const ProcessCatalog catalog = ofAll.on(machine.system, machine.abilities);
    const report::Look look = report::lookAtMachine(machine, catalog);
    std::string text = answer(options, look, catalog);
    if (options.why) {
        text += '\n' + report::renderWhy(look.reading.groups, [&](const ProcessUsage& usage) {
                    return host.whyThere(usage.pid, usage.path);
                });
    }
    return text;
}

int tellThePast(Seconds span, bool asJson) {
    LiveHost host;
    const TimePoint now = host.clock().now();
    const CauseStore store{std::filesystem::path{host.platform().applicationSupport} / "Pacelet"};
    const CauseJournal journal = store.load(now - span);
    return print((asJson ? report::renderPastJson(journal, span, now)
                         : report::renderPast(journal, span, now, host.platform().system)) +
                 '\n');
}

report::Look lookAndCapture(const report::Options& options, const ProcessCatalog& catalog) {
    LiveHost host;
    const std::int64_t looks = options.looks.value_or(report::usualLooks);
    complain(report::captureNotice(*options.captureFile, looks));
    return report::captureMachine(host.platform(), catalog, *options.captureFile, looks);
}

int run(const report::Options& options) {
    std::optional<Recorded::Capture> capture;
    if (options.replayFile) {
        capture = report::openCapture(*options.replayFile);
    }
    const std::filesystem::path program = ownProgram();
    ProcessCatalog catalog;
    try {
        catalog = ProcessCatalog::bundled(ResourceLocations::beside(program.parent_path()));
    } catch (const CatalogError&) {
        std::fputs((std::string{catalogMissing} + '\n').c_str(), stderr);
        return statusUnavailable;
    }
    if (capture) {
        const report::Look look = report::lookAtCapture(*std::move(capture), catalog);
        return print(answer(options, look, catalog.on(look.system, look.abilities)));
    }
    if (options.captureFile) {
        const report::Look look = lookAndCapture(options, catalog);
        return print(answer(options, look, catalog.on(look.system, look.abilities)));
    }
    if (options.psFile) {
        const report::Look look = report::lookAtTables(options, ::getuid());
        return print(answer(options, look, catalog.on(look.system)));
    }
    if (options.scenario) {
        catalog = catalog.on(OperatingSystem::macOS);
        return print(answer(options, report::lookAtScenario(*options.scenario, catalog), catalog));
    }
    return print(answerLive(options, catalog));
}

} // namespace

int main(int argc, char** argv) {
    // A reader that goes away is told by the write that fails.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        const std::vector<std::string_view> arguments{argv + 1, argv + argc};
        const report::Options options = report::parseOptions(arguments);
        if (::fcntl(STDOUT_FILENO, F_GETFD) < 0) {
            // What is opened next would stand in its place, and take the answer.
            complain("there is no standard output");
            return statusUnavailable;
        }
        if (options.help) {
            return print(report::usageText());
        }
        return options.since ? tellThePast(*options.since, options.json) : run(options);
    } catch (const report::UsageError& error) {
        complain(fmt::format("{} (see --help)", error.what()));
        return statusUsage;
    } catch (const report::FileError& error) {
        complain(error.what());
        return statusUsage;
    } catch (const std::exception& error) {
        complain(error.what());
        return statusUnavailable;
    }
}
