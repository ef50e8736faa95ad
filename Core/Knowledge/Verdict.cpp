#include "Core/Knowledge/Verdict.h"

#include "Core/Support/EnumTable.h"

namespace pacelet {

namespace {

struct VerdictRow {
    Verdict value;
    std::string_view rawValue;
    std::string_view label;
};
constexpr std::array<VerdictRow, 3> verdicts{{
    {Verdict::safe, "safe", "Safe to quit"},
    {Verdict::review, "review", "Review"},
    {Verdict::leave, "leave", "Leave it"},
}};

} // namespace

std::string_view rawValue(Verdict verdict) {
    return rowOf(verdicts, verdict).rawValue;
}

std::string_view label(Verdict verdict) {
    return rowOf(verdicts, verdict).label;
}

std::optional<Verdict> verdictFromRawValue(std::string_view rawValue) {
    return fromRawValue<Verdict>(verdicts, rawValue);
}

} // namespace pacelet
