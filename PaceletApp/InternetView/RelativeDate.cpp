#include "PaceletApp/InternetView/RelativeDate.h"

#include <array>
#include <cmath>
#include <fmt/format.h>
#include <string_view>

namespace pacelet {

namespace {

struct Unit {
    double seconds;
    std::string_view name;
    std::string_view last; ///< the name of the one before this; empty for none
    std::string_view next;
};

constexpr double day = 86400;

constexpr std::array<Unit, 7> units{{
    {365 * day, "year", "last year", "next year"},
    {30 * day, "month", "last month", "next month"},
    {7 * day, "week", "last week", "next week"},
    {day, "day", "yesterday", "tomorrow"},
    {3600, "hour", "", ""},
    {60, "minute", "", ""},
    {1, "second", "", ""},
}};

} // namespace

std::string relativeDate(Seconds age) {
    const bool isPast = age.count() >= 0;
    const double length = std::abs(age.count());
    for (const Unit& unit : units) {
        const double count = std::floor(length / unit.seconds);
        if (count < 1) {
            continue;
        }
        if (count == 1 && !unit.last.empty()) {
            return std::string{isPast ? unit.last : unit.next};
        }
        const std::string amount =
            fmt::format("{:.0f} {}{}", count, unit.name, count == 1 ? "" : "s");
        return isPast ? amount + " ago" : "in " + amount;
    }
    return "now";
}

} // namespace pacelet
