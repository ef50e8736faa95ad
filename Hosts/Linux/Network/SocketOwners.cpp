#include "Hosts/Linux/Network/SocketOwners.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Proc/FolderReader.h"
#include "Hosts/Linux/Proc/ShownText.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace pacelet::Linux {

namespace {

/// Adds the sockets of one process; whether it holds any.
bool addSockets(SocketOwners& owners, std::int32_t pid, const std::string& folder,
                std::vector<std::int32_t>& numbers, ReadBuffer& buffer) {
    FolderReader descriptors{folder};
    if (!descriptors.isOpen()) {
        return false;
    }
    bool holdsSockets = false;
    descriptors.listNumbers(numbers, buffer);
    for (const std::int32_t number : numbers) {
        const auto target = descriptors.readLink(std::to_string(number).c_str(), buffer);
        const auto inode = target ? socketInode(*target) : std::nullopt;
        if (inode) {
            owners.add(*inode, pid);
            holdsSockets = true;
        }
    }
    return holdsSockets;
}

} // namespace

void SocketOwners::add(std::uint64_t inode, std::int32_t pid) {
    std::int32_t& holder = pids_.try_emplace(inode, pid).first->second;
    holder = std::max(holder, pid);
}

void SocketOwners::setName(std::int32_t pid, std::string name) {
    names_.insert_or_assign(pid, std::move(name));
}

std::optional<std::int32_t> SocketOwners::pidOf(std::uint64_t inode) const {
    const auto place = pids_.find(inode);
    return place == pids_.end() ? std::nullopt : std::optional{place->second};
}

std::string_view SocketOwners::nameOf(std::int32_t pid) const {
    const auto place = names_.find(pid);
    return place == names_.end() ? std::string_view{} : place->second;
}

std::optional<std::uint64_t> socketInode(std::string_view linkTarget) {
    constexpr std::string_view prefix = "socket:[";
    if (!linkTarget.starts_with(prefix) || !linkTarget.ends_with(']')) {
        return std::nullopt;
    }
    linkTarget.remove_prefix(prefix.size());
    linkTarget.remove_suffix(1);
    return parseInteger<std::uint64_t>(linkTarget);
}

std::string trafficName(std::string_view comm) {
    if (comm.ends_with('\n')) {
        comm.remove_suffix(1);
    }
    std::string name = shownText(comm);
    std::replace(name.begin(), name.end(), ',', '?');
    return name;
}

SocketOwners readSocketOwners(const std::string& procFolder) {
    SocketOwners owners;
    FolderReader processes{procFolder};
    if (!processes.isOpen()) {
        return owners;
    }
    std::vector<std::int32_t> pids;
    std::vector<std::int32_t> descriptors;
    ReadBuffer buffer;
    processes.listNumbers(pids, buffer);
    for (const std::int32_t pid : pids) {
        const std::string folder = std::to_string(pid);
        if (!addSockets(owners, pid, procFolder + "/" + folder + "/fd", descriptors, buffer)) {
            continue;
        }
        if (const auto comm = processes.read((folder + "/comm").c_str(), buffer)) {
            owners.setName(pid, trafficName(*comm));
        }
    }
    return owners;
}

} // namespace pacelet::Linux
