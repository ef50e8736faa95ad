#pragma once

#include "Core/Internet/Link.h"
#include "Core/Internet/SpeedResult.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <vector>

namespace pacelet {

/// One measured figure with its name.
struct ReadingItem {
    QString label;
    QString value;
    QString tone; ///< "green", "amber" or "red"; empty for a value that says nothing good or bad

    std::string key() const { return label.toStdString(); }
    /// label, value and tone.
    static std::vector<ListRole<ReadingItem>> roles();

    bool operator==(const ReadingItem&) const = default;
};

/// "green", "amber" or "red".
QString toneOf(SignalQuality quality);

std::vector<ReadingItem> readings(const WiFiLink& wifi);
std::vector<ReadingItem> readings(const SpeedResult& speed);

using ReadingListModel = KeyedListModel<ReadingItem>;

} // namespace pacelet
