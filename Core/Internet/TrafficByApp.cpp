#include "Core/Internet/TrafficByApp.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace pacelet {

std::vector<NetUsage> trafficByApp(std::span<const NetUsage> usage, const AppName& appName) {
    std::vector<NetUsage> apps;
    std::unordered_map<std::string, std::size_t> indexOf;
    for (const NetUsage& process : usage) {
        std::string name = appName(process.pid).value_or(process.name);
        const auto [place, isNew] = indexOf.try_emplace(std::move(name), apps.size());
        if (isNew) {
            NetUsage& app = apps.emplace_back();
            app.pid = process.pid;
            app.name = place->first;
        }
        NetUsage& app = apps[place->second];
        app.bytesInPerSec += process.bytesInPerSec;
        app.bytesOutPerSec += process.bytesOutPerSec;
    }
    std::ranges::stable_sort(apps, std::greater{}, &NetUsage::total);
    return apps;
}

} // namespace pacelet
