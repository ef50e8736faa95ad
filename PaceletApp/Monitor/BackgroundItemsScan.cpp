#include "PaceletApp/Monitor/BackgroundItemsScan.h"

#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Sampling/PSProcessSource.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pacelet {

namespace {

/// Without the tool's list, the items are matched by the paths of their programs alone.
RunningJobs jobsOrNone(ToolRunner& tools) {
    try {
        return PSProcessSource::launchctlList(tools);
    } catch (const LaunchError&) {
        return {};
    }
}

} // namespace

std::vector<BackgroundItem> scanBackgroundItems(const Platform& platform,
                                                const std::optional<Snapshot>& snapshot) {
    std::vector<BackgroundItem> items = BackgroundItemsReader::scan(platform.home, platform.root);
    if (platform.backgroundItems != nullptr) {
        std::ranges::move(platform.backgroundItems->items(), std::back_inserter(items));
    }
    static const std::vector<ProcessSample> none;
    return BackgroundItemsReader::markRunning(std::move(items), jobsOrNone(platform.tools),
                                              snapshot ? snapshot->processes : none);
}

} // namespace pacelet
