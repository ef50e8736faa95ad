#include "Hosts/Linux/Proc/ProcStatus.h"

#include "Hosts/Linux/Proc/KeyedFigures.h"

namespace pacelet::Linux {

std::optional<std::int64_t> parseFootprint(std::string_view status) {
    std::optional<std::int64_t> anonymous;
    std::int64_t swapped = 0;
    forEachFigure(status, [&](std::string_view key, std::string_view value) {
        if (key == "RssAnon") {
            anonymous = parseKilobytes(value);
        } else if (key == "VmSwap") {
            swapped = parseKilobytes(value).value_or(0);
        }
    });
    std::int64_t footprint = 0;
    if (!anonymous || __builtin_add_overflow(*anonymous, swapped, &footprint)) {
        return std::nullopt;
    }
    return footprint;
}

} // namespace pacelet::Linux
