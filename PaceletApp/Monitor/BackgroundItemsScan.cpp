#include "PaceletApp/Monitor/BackgroundItemsScan.h"

#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Sampling/PSProcessSource.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pacelet {

std::vector<BackgroundItem> scanBackgroundItems(const Platform& platform,
                                                const std::optional<Snapshot>& snapshot) {
    std::vector<BackgroundItem> items = BackgroundItemsReader::scan(platform.home, platform.root);
    if (platform.backgroundItems != nullptr) {
        std::ranges::move(platform.backgroundItems->items(), std::back_inserter(items));
    }
    BackgroundItemsReader::RunningJobs jobs;
    try {
        jobs = PSProcessSource::launchctlList(platform.tools);
    } catch (const LaunchError&) {
        // Without the tool's list, the items are matched by the paths of their programs alone.
        jobs.clear();
    }
    static const std::vector<ProcessSample> none;
    return BackgroundItemsReader::markRunning(std::move(items), jobs,
                                              snapshot ? snapshot->processes : none);
}

} // namespace pacelet
