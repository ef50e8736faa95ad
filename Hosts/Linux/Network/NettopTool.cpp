#include "Hosts/Linux/Network/NettopTool.h"

#include <chrono>
#include <thread>
#include <utility>

namespace pacelet::Linux::NettopTool {

namespace {

constexpr Seconds samplingPeriod{1.0};
constexpr std::int32_t usageError = 64;

Machine thisMachine(NetlinkSocket& diagnostics, const std::string& procFolder,
                    const std::string& sysFolder) {
    return {[&]() -> std::optional<SocketSample> {
                auto sockets = readSocketCounters(diagnostics, readLocalNetworks(sysFolder));
                if (!sockets) {
                    return std::nullopt;
                }
                return SocketSample{std::chrono::steady_clock::now(), std::move(*sockets),
                                    readLinkCounters(procFolder, sysFolder)};
            },
            [&procFolder] { return readSocketOwners(procFolder); },
            [](Seconds period) { std::this_thread::sleep_for(period); }};
}

} // namespace

std::optional<std::string> text(const Machine& machine) {
    const auto before = machine.takeSample();
    if (!before) {
        return std::nullopt;
    }
    machine.sleep(samplingPeriod);
    const auto after = machine.takeSample();
    if (!after) {
        return std::nullopt;
    }
    const SocketOwners owners = machine.readOwners();
    const auto rates = trafficRates(*before, *after);
    return trafficBlock(totalTraffic(*before), owners) + trafficBlock(rates, owners) +
           otherTrafficLine(otherTraffic(*before, *after, rates, owners));
}

Shell::Output answer(const std::vector<std::string>& arguments, const Machine& machine) {
    static const std::vector<std::string> understood{
        "-P", "-d", "-L", "2", "-s", "1", "-x", "-J", "bytes_in,bytes_out"};
    if (arguments != understood) {
        return {usageError, "", "nettop: these arguments are not understood\n"};
    }
    std::optional<std::string> listing = text(machine);
    if (!listing) {
        return {1, "", "nettop: the kernel does not tell its sockets\n"};
    }
    return {0, std::move(*listing), ""};
}

Shell::Output run(const std::vector<std::string>& arguments, const std::string& procFolder,
                  const std::string& sysFolder) {
    NetlinkSocket diagnostics{NETLINK_SOCK_DIAG};
    return answer(arguments, thisMachine(diagnostics, procFolder, sysFolder));
}

} // namespace pacelet::Linux::NettopTool
