#include "Hosts/Linux/Network/InterfaceKind.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace pacelet::Linux {

namespace {

/// How the near ends of cables to containers and virtual machines are called.
constexpr std::array<std::string_view, 9> cablePrefixes{"veth", "ve-",   "vb-",   "vz-",    "vnet",
                                                        "tap",  "virbr", "vmnet", "vboxnet"};

bool isCable(std::string_view interface) {
    return std::ranges::any_of(cablePrefixes,
                               [&](auto prefix) { return interface.starts_with(prefix); });
}

/// Whether nothing but cables is plugged into the bridge. A device, or what stands for several of
/// them, makes it the machine's own way out.
bool hasOnlyCables(const std::filesystem::path& ports) {
    std::error_code error;
    std::filesystem::directory_iterator port{ports, error};
    for (; !error && port != std::filesystem::directory_iterator{}; port.increment(error)) {
        if (!isCable(port->path().filename().string())) {
            return false;
        }
    }
    return true;
}

} // namespace

InterfaceKind interfaceKind(const std::string& sysFolder, const std::string& interface) {
    const std::filesystem::path folder = std::filesystem::path{sysFolder} / "class/net" / interface;
    std::error_code error;
    if (std::filesystem::exists(folder / "device", error)) {
        return InterfaceKind::device;
    }
    const bool isBridge = std::filesystem::is_directory(folder / "bridge", error);
    // A tap may be a tunnel, too; in a bridge it is a virtual machine's.
    const bool isLocal = isBridge ? hasOnlyCables(folder / "brif")
                                  : isCable(interface) && !interface.starts_with("tap");
    return interface == "lo" || isLocal ? InterfaceKind::local : InterfaceKind::other;
}

} // namespace pacelet::Linux
