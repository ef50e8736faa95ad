#pragma once

#include <QString>

#include <string_view>

namespace pacelet {

/// UTF-8 as a text for the screens.
inline QString qtText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace pacelet
