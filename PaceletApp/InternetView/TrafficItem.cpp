#include "PaceletApp/InternetView/TrafficItem.h"

#include "PaceletApp/Support/QtText.h"

namespace pacelet {

TrafficItem trafficItem(const NetUsage& usage) {
    return {qtText(usage.name), qtText(byteRate(usage.bytesInPerSec)),
            qtText(byteRate(usage.bytesOutPerSec))};
}

std::vector<ListRole<TrafficItem>> TrafficItem::roles() {
    using Item = TrafficItem;
    return {
        {"name", [](const Item& item) { return item.name; }},
        {"incoming", [](const Item& item) { return item.incoming; }},
        {"outgoing", [](const Item& item) { return item.outgoing; }},
    };
}

} // namespace pacelet
