#include "Hosts/Linux/Background/ItemOwners.h"

#include "Hosts/Linux/Apps/AppTables.h"
#include "Hosts/Linux/Apps/TimeOfChange.h"

#include <array>

namespace pacelet::Linux {

namespace {

/// Units that a desktop machine hardly goes without, whatever package brings them.
constexpr auto baseUnits = std::to_array<std::string_view>({"systemd-*",
                                                            "getty@*",
                                                            "serial-getty@*",
                                                            "console-getty.*",
                                                            "dbus.*",
                                                            "dbus-broker.*",
                                                            "udev.*",
                                                            "fstrim.*",
                                                            "e2scrub*",
                                                            "logrotate.*",
                                                            "man-db.*",
                                                            "apt-daily*",
                                                            "dpkg-db-backup*",
                                                            "keyboard-setup.*",
                                                            "console-setup.*",
                                                            "setvtrgb.*",
                                                            "networking.*",
                                                            "NetworkManager*",
                                                            "ModemManager.*",
                                                            "wpa_supplicant*",
                                                            "rsyslog.*",
                                                            "cron.*",
                                                            "anacron.*",
                                                            "apparmor.*",
                                                            "polkit.*",
                                                            "accounts-daemon.*",
                                                            "udisks2.*",
                                                            "upower.*",
                                                            "rtkit-daemon.*",
                                                            "grub-*",
                                                            "remote-fs.*",
                                                            "lvm2-*",
                                                            "blk-availability.*",
                                                            "thermald.*",
                                                            "irqbalance.*"});

} // namespace

void PackageOwners::learn(std::span<const std::string> paths) {
    if (const auto now = timeOfChange(dpkg_.statusFile()); now != changed_) {
        changed_ = now;
        known_.clear();
    }
    std::vector<std::string> unknown;
    for (const std::string& path : paths) {
        if (!path.empty() && known_.try_emplace(path).second) {
            unknown.push_back(path);
        }
    }
    for (auto& [path, package] : dpkg_.owners(unknown)) {
        known_[path] = std::move(package);
    }
}

const Package* PackageOwners::of(const std::string& path) const {
    const auto found = known_.find(path);
    return found != known_.end() && found->second ? &*found->second : nullptr;
}

bool isOfBaseSystem(std::string_view unit, const Package* package) {
    return (package != nullptr && package->isBase) || AppTables::contains(baseUnits, unit);
}

} // namespace pacelet::Linux
