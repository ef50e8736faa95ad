#pragma once

#include "Core/Platform/BackgroundItem.h"
#include "Core/Platform/Platform.h"
#include "Core/Platform/ProcessSample.h"

#include <optional>
#include <vector>

namespace pacelet {

/// Everything that starts by itself and what of it runs: of the folders, and of the host's own
/// source. Runs a tool and reads files. Without a snapshot, only jobs that the tool lists are known
/// to run.
std::vector<BackgroundItem> scanBackgroundItems(const Platform& platform,
                                                const std::optional<Snapshot>& snapshot);

} // namespace pacelet
