#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace pacelet::Linux {

/// Which process holds which socket, as far as we may know: the descriptors of other users'
/// processes are hidden from us.
class SocketOwners {
public:
    /// A socket that several processes hold, since one was made by another, belongs to the highest
    /// pid: the child is most often the one that works with it.
    void add(std::uint64_t inode, std::int32_t pid);
    void setName(std::int32_t pid, std::string name);

    std::optional<std::int32_t> pidOf(std::uint64_t inode) const;
    /// Empty for an unknown process.
    std::string_view nameOf(std::int32_t pid) const;

private:
    std::unordered_map<std::uint64_t, std::int32_t> pids_{};
    std::unordered_map<std::int32_t, std::string> names_{};
};

/// The inode in the target of a descriptor's link, such as "socket:[4711]".
std::optional<std::uint64_t> socketInode(std::string_view linkTarget);

/// A process name as it may stand in a line of fields between commas.
std::string trafficName(std::string_view comm);

/// Goes through the descriptors of all processes below `procFolder`.
SocketOwners readSocketOwners(const std::string& procFolder);

} // namespace pacelet::Linux
