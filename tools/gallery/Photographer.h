#pragma once

#include "tools/gallery/Samples.h"

#include <QImage>
#include <QQmlEngine>
#include <QString>

#include <optional>

namespace pacelet::gallery {

/// Shows a page of QML and takes its picture.
class Photographer {
public:
    Photographer();

    /// The page as it settles; nothing when it could not be shown, after a warning on standard
    /// error.
    std::optional<QImage> picture(const QString& resource);

private:
    Samples samples_;
    QQmlEngine engine_;
};

} // namespace pacelet::gallery
