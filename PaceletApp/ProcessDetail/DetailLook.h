#pragma once

#include "Core/Inspectors/SpotlightAdvisor.h"
#include "Core/Inspectors/WindowCensus.h"
#include "Core/Knowledge/CatalogEntry.h"
#include "Core/Sampling/ProcessGroup.h"
#include "Core/Support/Time.h"
#include "PaceletApp/Components/Look.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace pacelet {

/// A name and one or two figures.
struct FigureRow {
    std::string id;
    QString name;
    QString first;
    QString second; ///< empty for one figure

    const std::string& key() const { return id; }
    /// name, first and second.
    static std::vector<ListRole<FigureRow>> roles();

    bool operator==(const FigureRow&) const = default;
};

using FigureListModel = KeyedListModel<FigureRow>;

/// Buttons in a row.
using FixListModel = KeyedListModel<FixLook>;

/// Families of processes for which there is more help than the catalog gives.
enum class Family { other, spotlight, windowServer };

Family familyOf(const ProcessGroup& group);

/// The fixes of the explanation that make sense on its own panel, in order. `spotlightBusySince` is
/// when the load of Spotlight began.
std::vector<FixID> shownFixes(const Explanation& explanation, const ProcessGroup& group,
                              const std::optional<TimePoint>& spotlightBusySince, TimePoint now);

/// "Busiest parts (12 processes)"; empty for a group without helpers.
QString partsLabel(const ProcessGroup& group);

/// The five busiest processes of the group, with CPU and memory; none without helpers.
std::vector<FigureRow> busiestParts(const ProcessGroup& group);

/// Large folders with their sizes.
std::vector<FigureRow> folderRows(std::span<const HeavyFolder> folders);

/// "Displays: 2 (1 scaled)".
QString displaysText(const DisplayInfo& displays);

/// The five applications with the most windows.
std::vector<FigureRow> windowRows(std::span<const WindowCount> counts);

/// The group that has the most windows, or null.
const ProcessGroup* topGroup(std::span<const WindowCount> counts,
                             std::span<const ProcessGroup> groups);

/// What can be done about a group with many windows.
std::optional<FixID> windowsFix(const ProcessGroup& group, OperatingSystem system);

/// Address of a guide page; empty without one.
std::string guideAddress(const std::string& website, const std::optional<std::string>& guide);

} // namespace pacelet
