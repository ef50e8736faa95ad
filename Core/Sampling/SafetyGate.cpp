#include "Core/Sampling/SafetyGate.h"

#include "Core/Support/Text.h"

#include <algorithm>

namespace pacelet::SafetyGate {

bool canQuit(std::uint32_t uid, std::uint32_t currentUID, std::string_view path,
             std::string_view name, bool isRegularApp) {
    const auto isDenied = [](std::string_view candidate) {
        return std::ranges::find(denyNames, candidate) != denyNames.end();
    };
    const auto isProtected = [&](std::string_view prefix) { return path.starts_with(prefix); };
    return isRegularApp && uid == currentUID && !isDenied(name) &&
           !isDenied(lastPathComponent(path)) &&
           std::ranges::none_of(protectedPrefixes, isProtected);
}

} // namespace pacelet::SafetyGate
