#pragma once

#include "Hosts/Linux/Proc/FolderReader.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace pacelet::Linux {

/// A file by the number of its device and of itself.
using FileNumber = std::pair<std::uint64_t, std::uint64_t>;

/// Adds to each file of `mapped` what a process has of it in memory or in swap, its pages divided
/// among those who have them, out of `/proc/<pid>/smaps`.
void addMapped(std::string_view smaps, std::map<FileNumber, std::int64_t>& mapped);

/// Memory in files without a name (a memfd, or what was deleted from /dev/shm) that somebody holds
/// open and nobody has mapped: no other figure of a process has it. In bytes by process; a file of
/// several counts in parts. Files below `leastBytes` are left out, and those of other users'
/// processes where we may not look into them. Goes through all descriptors of all processes.
std::unordered_map<std::int32_t, std::int64_t> readHeldMemory(const FolderReader& proc,
                                                              std::int64_t leastBytes);

} // namespace pacelet::Linux
