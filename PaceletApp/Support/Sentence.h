#pragma once

#include <QCoreApplication>

#include <fmt/format.h>

#include <string>
#include <string_view>

namespace pacelet {

/// A sentence of ours as Qt's translators say it, and the data in its places. The screens' qsTr()
/// asks the same translators.
template<typename... Data>
std::string sentence(fmt::format_string<const Data&...> text, const Data&... data) {
    const fmt::string_view source = text;
    const std::string said =
        QCoreApplication::translate("", std::string{source.data(), source.size()}.c_str())
            .toStdString();
    return fmt::vformat(said, fmt::make_format_args(data...));
}

} // namespace pacelet
