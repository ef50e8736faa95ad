#pragma once

#include "Core/Diagnosis/Finding.h"
#include "PaceletApp/Components/Look.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <string>

namespace pacelet {

/// A row of the further causes.
struct CauseItem {
    std::string id; ///< of the finding; several may share one
    QString headline;
    bool grave = false; ///< high or critical
    FixLook fix;        ///< empty for none
    QString note;       ///< shown without a fix

    bool operator==(const CauseItem&) const = default;
};

/// `group` is the one that the finding is about, or null.
CauseItem causeItem(const Finding& finding, const ProcessGroup* group);

using CauseListModel = KeyedListModel<CauseItem>;

/// headline, grave, fix and note.
std::vector<ListRole<CauseItem>> causeRoles();

/// "And 2 more causes"; empty for none.
QString moreCausesLabel(std::size_t count);

} // namespace pacelet
