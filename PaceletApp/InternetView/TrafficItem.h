#pragma once

#include "Core/Internet/NetUsage.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <vector>

namespace pacelet {

/// A row of who uses the connection.
struct TrafficItem {
    QString name;
    QString incoming; ///< "1.2 MB/s"
    QString outgoing;

    std::string key() const { return name.toStdString(); }
    /// name, incoming and outgoing.
    static std::vector<ListRole<TrafficItem>> roles();

    bool operator==(const TrafficItem&) const = default;
};

TrafficItem trafficItem(const NetUsage& usage);

using TrafficListModel = KeyedListModel<TrafficItem>;

} // namespace pacelet
