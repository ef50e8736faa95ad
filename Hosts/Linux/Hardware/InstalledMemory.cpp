#include "Hosts/Linux/Hardware/InstalledMemory.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace pacelet::Linux {

namespace {

/// The sizes of the modules, in lines such as "E:MEMORY_DEVICE_0_SIZE=8589934592", added up.
std::int64_t modules(std::string_view firmwareRecord) {
    constexpr std::string_view prefix = "E:MEMORY_DEVICE_";
    constexpr std::string_view size = "_SIZE=";
    std::int64_t sum = 0;
    forEachLine(firmwareRecord, [&](std::string_view line) {
        if (!line.starts_with(prefix)) {
            return;
        }
        line.remove_prefix(prefix.size());
        const std::size_t digits = std::min(line.size(), line.find_first_not_of("0123456789"));
        if (!line.substr(digits).starts_with(size)) {
            return;
        }
        const auto bytes = parseInteger<std::int64_t>(line.substr(digits + size.size()));
        if (bytes && *bytes > 0 && __builtin_add_overflow(sum, *bytes, &sum)) {
            sum = std::numeric_limits<std::int64_t>::max();
        }
    });
    return sum;
}

/// Memory comes in sixteenths of the next power of two, and in whole gigabytes if there are any.
std::int64_t nextSize(std::int64_t bytes) {
    constexpr std::int64_t gigabyte = 1 << 30;
    constexpr std::int64_t quarter = gigabyte / 4;
    const auto power = static_cast<std::int64_t>(std::bit_ceil(static_cast<std::uint64_t>(bytes)));
    const std::int64_t step = bytes > gigabyte ? std::max(power / 16, gigabyte) : quarter;
    return (bytes + step - 1) / step * step;
}

} // namespace

std::int64_t installedMemory(std::int64_t managed, std::string_view firmwareRecord) {
    /// No machine has more; so much still rounds up within 64 bits.
    constexpr std::int64_t most = std::int64_t{1} << 60;
    if (const std::int64_t sum = modules(firmwareRecord); sum >= managed && sum <= most) {
        return sum;
    }
    return managed > most ? managed : nextSize(std::max<std::int64_t>(managed, 0));
}

} // namespace pacelet::Linux
