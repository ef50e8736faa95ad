#pragma once

#include "Core/Sampling/SystemSignals.h"
#include "PaceletApp/Components/ProcessItem.h"
#include "PaceletApp/Components/Tone.h"
#include "PaceletApp/ProcessesView/ProcessEntry.h"

#include <QString>

#include <span>
#include <string>
#include <vector>

namespace pacelet {

/// A row of the process list on screen: what it says, and where it stands.
struct ListedProcess : ProcessItem {
    std::string rowKey;     ///< which row of the screen shows it; a row outlives what it shows
    bool kernel = false;    ///< its "cpu" is a word on the heat, in the colour of `tone`
    Tone tone = Tone::None; ///< none for any other row
    bool open = false;      ///< its panel shows below it
    bool current = false;   ///< the keyboard works on it
    double y = 0;           ///< upper edge, in points from the top of the list

    const std::string& key() const { return rowKey; }
    /// The roles of a process table, and kernel, tone, open, current and place, the row's upper
    /// edge.
    static std::vector<ListRole<ListedProcess>> roles();

    bool operator==(const ListedProcess&) const = default;
};

/// Says what `entry` is. Key and place are left open.
ListedProcess listedProcess(const ProcessEntry& entry, Thermal thermal);

using ProcessRowsModel = KeyedListModel<ListedProcess>;

/// Gives each of `next` the key under which `shown` has the same process. The others take over the
/// keys that are left, so that rows that come into view are those that went out of it. `counter`
/// numbers new keys.
void assignKeys(std::vector<ListedProcess>& next, std::span<const ListedProcess* const> shown,
                std::uint64_t& counter);

} // namespace pacelet
