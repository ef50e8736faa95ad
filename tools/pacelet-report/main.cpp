// Prints why this machine is slow, as text: the program's answer without its window.

#include "Core/Diagnosis/Report.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Core/Sampling/PSProcessSource.h"
#include "Hosts/Linux/LinuxHost.h"
#include "tools/pacelet-report/Answer.h"
#include "tools/pacelet-report/JsonReport.h"
#include "tools/pacelet-report/Options.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using namespace pacelet;

constexpr int statusUnavailable = 1;
constexpr int statusUsage = 2;

constexpr Seconds betweenLooks{3};

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

MachineReading readFiles(const report::Options& options, Linux::LinuxHost& host) {
    report::CapturedTables tables{readFile(*options.psFile), std::nullopt, options.seconds};
    if (options.laterPSFile) {
        tables.later = readFile(*options.laterPSFile);
    }
    return report::readCaptured(tables, host.kernel().activeProcessorCount(),
                                host.kernel().getuid());
}

/// Two looks at the live machine, so that CPU figures tell what happens now.
MachineReading readLive(Linux::LinuxHost& host, const ProcessCatalog& catalog) {
    const std::optional<Snapshot> first = PSProcessSource{host.tools(), host.clock()}.sample();
    std::this_thread::sleep_for(betweenLooks);
    return readMachine(host.tools(), host.kernel(), host.clock(), first, catalog, Explaining::no);
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
    Linux::LinuxHost host;
    const MachineReading reading =
        options.psFile ? readFiles(options, host) : readLive(host, catalog);
    const bool lowPower = !options.psFile && host.kernel().isLowPowerModeEnabled();
    const DiagnosisResult result = report::diagnose(reading, catalog, lowPower, host.clock().now());
    const auto render = options.json ? report::renderJson : Report::render;
    fmt::print("{}\n", render(result, reading.groups, catalog, reading.signals));
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
