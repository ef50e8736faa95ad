#include "Core/Internet/Responsiveness.h"

#include "Core/Support/EnumTable.h"

namespace pacelet {

namespace {

struct GradeRow {
    Responsiveness value;
    std::string_view rawValue;
    std::string_view label;
};
constexpr std::array<GradeRow, 3> grades{{
    {Responsiveness::high, "high", "High"},
    {Responsiveness::medium, "medium", "Medium"},
    {Responsiveness::low, "low", "Low"},
}};

} // namespace

Responsiveness responsiveness(std::int64_t rpm) {
    if (rpm >= 1000) {
        return Responsiveness::high;
    }
    return rpm >= 300 ? Responsiveness::medium : Responsiveness::low;
}

std::string_view rawValue(Responsiveness grade) {
    return rowOf(grades, grade).rawValue;
}

std::string_view label(Responsiveness grade) {
    return rowOf(grades, grade).label;
}

} // namespace pacelet
