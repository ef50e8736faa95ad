// Prints why this machine is slow, as text: the program's answer without its window.

#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Hosts/Linux/LinuxHost.h"
#include "tools/pacelet-report/Answer.h"
#include "tools/pacelet-report/JsonReport.h"
#include "tools/pacelet-report/LiveLook.h"
#include "tools/pacelet-report/Options.h"
#include "tools/pacelet-report/ScenarioLook.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

namespace {

using namespace pacelet;

constexpr int statusUnavailable = 1;
constexpr int statusUsage = 2;

/// A file that the user named cannot be read.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::string readFile(const std::string& path) {
    std::error_code error;
    std::ifstream stream{path, std::ios::binary};
    if (!stream.is_open() || std::filesystem::is_directory(path, error)) {
        throw FileError{fmt::format("couldn't read {}", path)};
    }
    return {std::istreambuf_iterator<char>{stream}, {}};
}

report::Look lookAtFiles(const report::Options& options) {
    Linux::LinuxHost host;
    report::CapturedTables tables{readFile(*options.psFile), std::nullopt, options.seconds};
    if (options.laterPSFile) {
        tables.later = readFile(*options.laterPSFile);
    }
    return {
        report::readCaptured(tables, host.kernel().activeProcessorCount(), host.kernel().getuid())};
}

report::Look lookAtThisMachine(const ProcessCatalog& catalog) {
    Linux::LinuxHost host;
    return report::lookAtMachine(host.tools(), host.kernel(), host.clock(), catalog);
}

report::Look lookAs(const report::Options& options, const ProcessCatalog& catalog) {
    if (options.psFile) {
        return lookAtFiles(options);
    }
    return options.scenario ? report::lookAtScenario(*options.scenario, catalog)
                            : lookAtThisMachine(catalog);
}

int run(const report::Options& options) {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    ProcessCatalog catalog;
    try {
        catalog = ProcessCatalog::bundled(ResourceLocations::beside(program.parent_path()));
    } catch (const CatalogError&) {
        fmt::print(stderr, "Pacelet couldn't load its process list. Reinstall Pacelet.\n");
        return statusUnavailable;
    }
    const report::Look look = lookAs(options, catalog);
    const DiagnosisResult result = report::diagnose(look, catalog);
    const auto render = options.json ? report::renderJson : Report::render;
    fmt::print("{}\n", render(result, look.reading.groups, catalog, look.reading.signals));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<std::string_view> arguments{argv + 1, argv + argc};
        const report::Options options = report::parseOptions(arguments);
        if (options.help) {
            fmt::print("{}", report::usageText());
            return 0;
        }
        return run(options);
    } catch (const report::UsageError& error) {
        fmt::print(stderr, "pacelet-report: {} (see --help)\n", error.what());
        return statusUsage;
    } catch (const FileError& error) {
        fmt::print(stderr, "pacelet-report: {}\n", error.what());
        return statusUsage;
    } catch (const std::exception& error) {
        fmt::print(stderr, "pacelet-report: {}\n", error.what());
        return statusUnavailable;
    }
}
