#pragma once

#include "Core/Internet/Link.h"
#include "Core/Internet/SpeedResult.h"
#include "PaceletApp/Components/Tone.h"
#include "PaceletApp/Models/KeyedListModel.h"

#include <QString>

#include <vector>

namespace pacelet {

/// One measured figure with its name.
struct ReadingItem {
    QString label;
    QString value;
    Tone tone = Tone::None; ///< none for a value that says nothing good or bad

    std::string key() const { return label.toStdString(); }
    /// label, value and tone.
    static std::vector<ListRole<ReadingItem>> roles();

    bool operator==(const ReadingItem&) const = default;
};

/// Green, amber or red.
Tone toneOf(SignalQuality quality);

std::vector<ReadingItem> readings(const WiFiLink& wifi);
std::vector<ReadingItem> readings(const SpeedResult& speed);

using ReadingListModel = KeyedListModel<ReadingItem>;

} // namespace pacelet
