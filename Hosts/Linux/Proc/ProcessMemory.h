#pragma once

#include "Hosts/Linux/Proc/FolderReader.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace pacelet::Linux {

/// What a process holds of memory that belongs to no file, in bytes. Each page counts in full with
/// everybody who has it, as in `/proc/<pid>/status`, or in parts with those who share it, as in
/// `/proc/<pid>/smaps_rollup`.
struct ProcessMemory {
    std::int64_t anonymous = 0;
    std::int64_t shared = 0; ///< shared mappings, named or not
    std::int64_t swapped = 0;

    /// All of it; no figure is so large that this overflows.
    std::int64_t total() const { return anonymous + shared + swapped; }

    bool operator==(const ProcessMemory&) const = default;
};

/// The same with whose child the process is.
struct CountedMemory {
    ProcessMemory memory;
    std::int32_t parent = 0;

    bool operator==(const CountedMemory&) const = default;
};

/// Out of `status`, which is cheap to read. Nothing for what has no memory of its own (a kernel
/// thread, a process that has ended).
std::optional<ProcessMemory> parseStatusMemory(std::string_view status);

std::optional<CountedMemory> parseCountedMemory(std::string_view status);

/// The same of a process. Nothing for what has gone, either.
std::optional<CountedMemory> readCountedMemory(const FolderReader& proc, std::int32_t pid,
                                               ReadBuffer& buffer);

/// Out of `smaps_rollup`, for which the kernel goes through every page: pages that several
/// processes have are divided among them. Nothing where it does not tell the parts.
std::optional<ProcessMemory> parseSharedOut(std::string_view smapsRollup);

} // namespace pacelet::Linux
