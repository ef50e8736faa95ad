#include "PaceletApp/Application/Activation.h"

#include <QtGlobal>

namespace pacelet {

Activation Activation::ofEnvironment() {
    return {qgetenv("DESKTOP_STARTUP_ID"), qgetenv("XDG_ACTIVATION_TOKEN")};
}

std::optional<std::uint32_t> Activation::time() const {
    constexpr QByteArrayView mark = "_TIME";
    const qsizetype at = startupID.lastIndexOf(mark);
    bool isNumber = false;
    const std::uint32_t time = startupID.mid(at + mark.size()).toUInt(&isNumber);
    return at >= 0 && isNumber ? std::optional{time} : std::nullopt;
}

} // namespace pacelet
