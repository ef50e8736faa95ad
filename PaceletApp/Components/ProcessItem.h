#pragma once

#include "Core/Knowledge/CatalogEntry.h"
#include "Core/Sampling/ProcessGroup.h"
#include "PaceletApp/Components/Look.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <string>

namespace pacelet {

/// A row of the process table, with its words finished.
struct ProcessItem {
    std::string id;  ///< of the group
    QString appPath; ///< empty for a lone process
    QString symbol;
    QString name;
    QString subtitle;
    QString cpu;
    QString memory;
    QString verdict; ///< raw value; empty without an explanation
    FixLook fix;     ///< empty where none is offered
    QString note;    ///< stands in the fix's place
    QString spoken;  ///< all of the row but its name, for those who hear it

    const std::string& key() const { return id; }
    /// The roles of a process table: groupId, appPath, symbol, name, subtitle, cpu, memory,
    /// verdict, fix, note and spoken.
    static std::vector<ListRole<ProcessItem>> roles();

    bool operator==(const ProcessItem&) const = default;
};

/// What stands in the columns of `item`, in one line; nothing for what is empty.
QString spoken(const ProcessItem& item, const QString& figures);

/// `explanation` may be null.
ProcessItem processItem(const ProcessGroup& group, const Explanation* explanation);

using ProcessListModel = KeyedListModel<ProcessItem>;

} // namespace pacelet
