#pragma once

#include "PaceletApp/OverviewView/OverviewModel.h"

#include <QObject>

namespace pacelet::gallery {

/// Pictures of machines to look at, for the pages.
class Samples : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// "checking", "quiet", "busy", "struggling" or "long", which has words of extreme length.
    Q_INVOKABLE pacelet::OverviewModel* overview(const QString& state);
};

} // namespace pacelet::gallery
