#pragma once

#include "Core/Diagnosis/Finding.h"
#include "PaceletApp/Components/Look.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <span>
#include <string>

namespace pacelet {

/// A row of the further causes.
struct CauseItem {
    std::string id; ///< of the finding; several may share one
    QString headline;
    bool grave = false; ///< high or critical
    FixLook fix;        ///< empty for none
    QString note;       ///< shown without a fix

    const std::string& key() const { return id; }
    /// headline, grave, fix and note.
    static std::vector<ListRole<CauseItem>> roles();

    bool operator==(const CauseItem&) const = default;
};

/// The one of `groups` that the finding is about, or null.
const ProcessGroup* groupOf(const Finding& finding, std::span<const ProcessGroup> groups);

CauseItem causeItem(const Finding& finding, std::span<const ProcessGroup> groups);

using CauseListModel = KeyedListModel<CauseItem>;

/// "And 2 more causes"; empty for none.
QString moreCausesLabel(std::size_t count);

} // namespace pacelet
