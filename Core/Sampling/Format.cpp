#include "Core/Sampling/Format.h"

#include "Core/Support/Checked.h"

#include <array>
#include <cmath>
#include <fmt/format.h>
#include <string_view>

namespace pacelet::Format {

namespace {

struct Unit {
    std::string_view name;
    std::uint64_t bytes;
    std::uint64_t scale; ///< 10 to the number of decimals
};

constexpr std::uint64_t kilo = 1024;
constexpr std::array<Unit, 4> units{{
    {"KB", kilo, 1},
    {"MB", kilo* kilo, 10},
    {"GB", kilo* kilo* kilo, 100},
    {"TB", kilo* kilo* kilo* kilo, 100},
}};

/// `count` in `unit`, times its scale, rounded half up. In integers, since a float cannot hold
/// every count.
std::uint64_t scaled(std::uint64_t count, const Unit& unit) {
    const std::uint64_t whole = count / unit.bytes;
    const std::uint64_t rest = count % unit.bytes;
    return whole * unit.scale + (rest * unit.scale + unit.bytes / 2) / unit.bytes;
}

std::string decimal(std::uint64_t figure, std::uint64_t scale) {
    std::string text = fmt::format("{}", figure / scale);
    std::uint64_t fraction = figure % scale;
    if (fraction != 0) {
        text += '.';
        for (scale /= 10; fraction != 0; scale /= 10) {
            text += static_cast<char>('0' + fraction / scale);
            fraction %= scale;
        }
    }
    return text;
}

} // namespace

std::string bytes(std::int64_t count) {
    const bool negative = count < 0;
    const std::uint64_t size =
        negative ? ~static_cast<std::uint64_t>(count) + 1 : static_cast<std::uint64_t>(count);
    std::size_t unit = 0;
    std::uint64_t figure = scaled(size, units[unit]);
    while (unit + 1 < units.size() && figure >= kilo * units[unit].scale) {
        figure = scaled(size, units[++unit]);
    }
    return fmt::format("{}{} {}", negative && figure != 0 ? "-" : "",
                       decimal(figure, units[unit].scale), units[unit].name);
}

std::string percent(double value) {
    return fmt::format("{}%", checkedRound(value, "a percentage is out of range"));
}

std::string storage(std::int64_t count) {
    constexpr double gigabyte = 1e9;
    constexpr double gigabytesPerTerabyte = 1000;
    const double size = static_cast<double>(count) / gigabyte;
    if (size >= gigabytesPerTerabyte) {
        return fmt::format("{} TB",
                           checkedRound(size / gigabytesPerTerabyte, "a size is out of range"));
    }
    return fmt::format("{} GB", checkedRound(size, "a size is out of range"));
}

} // namespace pacelet::Format
