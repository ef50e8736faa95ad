#pragma once

#include "Core/Platform/Kernel.h"
#include "Core/Platform/ToolRunner.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

/// What this machine is.
struct MacInfo {
    std::string name; ///< the model's name, or its raw identifier when the name is not to be had
    std::string chip;
    std::int64_t memoryBytes = 0; ///< installed memory
    bool isAppleSilicon = false;
    bool isMac = true; ///< not when the kernel says that it is another system's

    /// Asks `system_profiler`, and the kernel when that gives nothing of use. Blocks for as long as
    /// the tool runs; always answers.
    static MacInfo read(ToolRunner& tools, Kernel& kernel);

    /// From the tool's JSON; nothing unless it describes a machine with a name. `physicalMemory`
    /// (bytes) stands in where the text does not tell the memory.
    static std::optional<MacInfo> parse(std::string_view systemProfilerJSON,
                                        std::int64_t physicalMemory);

    /// Bytes of a size such as "16 GB": a whole number, a blank, and TB, GB or MB in base 1024.
    static std::optional<std::int64_t> parseSize(std::string_view text);

    bool operator==(const MacInfo&) const = default;
};

} // namespace pacelet
