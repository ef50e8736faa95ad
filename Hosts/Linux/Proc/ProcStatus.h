#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace pacelet::Linux {

/// The footprint out of `/proc/<pid>/status`, in bytes: anonymous memory, resident and swapped out.
/// Pages of files and of shared memory are not counted, since they are not the process's alone.
/// Nothing for what has no memory of its own (a kernel thread, a process that has ended).
std::optional<std::int64_t> parseFootprint(std::string_view status);

} // namespace pacelet::Linux
