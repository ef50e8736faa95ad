#pragma once

#include "Core/Usage/CauseJournal.h"
#include "PaceletApp/Components/Tone.h"
#include "PaceletApp/Models/KeyedListModel.h"
#include "PaceletApp/UsageView/ChartAxis.h"
#include "PaceletApp/UsageView/UsageCharts.h"

#include <QList>
#include <QString>

#include <span>
#include <string>
#include <vector>

namespace pacelet {

/// One cause over a stretch of time.
struct CauseListItem {
    std::string id;  ///< the same for the same cause
    QString groupId; ///< of the process, if it runs now
    QString symbol;
    Tone tone = Tone::None; ///< neutral for what is of little weight
    QString name;
    QString effect;
    QString stood; ///< "2 h 10 min"
    QString times; ///< "14 times"
    QString last;  ///< when it stood last: "14:32" for today, else with its day
    QString spoken;
    QList<qreal> strip; ///< how much of each part of the whole range it took, 0 to 1

    const std::string& key() const { return id; }
    /// All but the id.
    static std::vector<ListRole<CauseListItem>> roles();

    bool operator==(const CauseListItem&) const = default;
};

using CauseRowsModel = KeyedListModel<CauseListItem>;

/// What a list of causes is made for.
struct CauseView {
    ChartSpan range{};   ///< what the strips show
    ChartSpan stretch{}; ///< what the figures tell of, within the range
    TimePoint now{};
    QTimeZone zone;
};

/// Into how many parts the strips cut a range.
inline constexpr std::size_t stripParts = 96;

/// The causes of the stretch, longest first. A process is looked for among `groups`.
std::vector<CauseListItem> causeList(const CauseJournal& journal, const CauseView& view,
                                     std::span<const ProcessGroup> groups);

/// The sentence in place of an empty list.
QString noCauses(const UsageRange& range, bool isNarrowed);

/// "Show 5 more"; empty where there are none.
QString moreCausesTitle(std::size_t hidden);

} // namespace pacelet
