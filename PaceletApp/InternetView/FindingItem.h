#pragma once

#include "Core/Diagnosis/Finding.h"
#include "PaceletApp/Components/Look.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <string>

namespace pacelet {

/// A row of what is wrong with the connection.
struct FindingItem {
    std::string id; ///< of the finding
    QString symbol;
    Tone tone = Tone::None; ///< red for a grave finding, amber or neutral for a lesser one
    QString title;
    QString detail;
    FixLook fix; ///< empty for none

    const std::string& key() const { return id; }
    /// symbol, tone, title, detail and fix.
    static std::vector<ListRole<FindingItem>> roles();

    bool operator==(const FindingItem&) const = default;
};

FindingItem findingItem(const Finding& finding);

using FindingListModel = KeyedListModel<FindingItem>;

} // namespace pacelet
