#pragma once

#include "Core/Platform/ShellOutput.h"
#include "Hosts/Linux/Network/SocketTraffic.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The traffic of each process in the Mac's listing: two samples, the second one holding what moved
/// a second. It covers the TCP connections of the processes whose descriptors we may see, and in
/// one more line all that goes over the network beside them.
namespace pacelet::Linux::NettopTool {

/// What the listing is made of.
struct Machine {
    std::function<std::optional<SocketSample>()> takeSample;
    std::function<SocketOwners()> readOwners;
    std::function<void(Seconds)> sleep;
};

/// Takes two samples a second apart; nothing when the kernel does not tell its sockets.
std::optional<std::string> text(const Machine& machine);

/// Answers the one command line that is understood; status 64 for any other, 1 without a listing.
Shell::Output answer(const std::vector<std::string>& arguments, const Machine& machine);

/// The same for this machine. Blocks for somewhat over a second; safe from any thread.
Shell::Output run(const std::vector<std::string>& arguments, const std::string& procFolder,
                  const std::string& sysFolder);

} // namespace pacelet::Linux::NettopTool
