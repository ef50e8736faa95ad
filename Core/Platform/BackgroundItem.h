#pragma once

#include "Core/Platform/ProgramKnowledge.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

/// Where a background item was found, and so for whom it runs.
enum class ItemScope { userAgent, systemAgent, systemDaemon, appBundled };

std::string_view rawValue(ItemScope scope);

/// Something that is set up to run without being asked. All texts are UTF-8; bytes of a file or
/// its name that are none are replaced by U+FFFD.
struct BackgroundItem {
    std::string label;                  ///< the job's label, or a helper app's bundle identifier
    std::optional<std::string> program; ///< absolute path of the executable, as far as it is told
    std::string source;                 ///< path of the file or helper app that defines the item
    ItemScope scope = ItemScope::userAgent;
    std::optional<std::string> ownerApp; ///< display name of the application it belongs to
    bool runAtLoad = false;              ///< starts when it is loaded
    bool keepAlive = false;              ///< is started again when it exits
    std::optional<std::int32_t> pid;     ///< of its process while it runs
    std::optional<ProgramFacts> facts;   ///< what it says of itself, where the system has it say so

    /// What an item is known by in lists.
    std::string id() const { return label + "|" + source; }

    bool operator==(const BackgroundItem&) const = default;
};

} // namespace pacelet
