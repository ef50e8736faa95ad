#pragma once

#include "tools/gallery/shots/Shot.h"

#include <QImage>
#include <QQmlEngine>
#include <QString>

#include <memory>
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
    QQmlEngine engine_;
};

/// The program as the shot leaves it; nothing when its window does not come up.
std::optional<QImage> picture(const Shot& shot);

} // namespace pacelet::gallery
