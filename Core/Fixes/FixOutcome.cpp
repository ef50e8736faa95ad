#include "Core/Fixes/FixOutcome.h"

#include "Core/Support/EnumTable.h"

#include <fmt/format.h>

namespace pacelet {

namespace {

constexpr std::int64_t userCanceled = -128;

struct OutcomeRow {
    FixOutcome::Kind value;
    std::string_view rawValue;
};
constexpr std::array<OutcomeRow, 6> outcomeKinds{{
    {FixOutcome::Kind::failed, "failed"},
    {FixOutcome::Kind::done, "done"},
    {FixOutcome::Kind::alreadyGone, "alreadyGone"},
    {FixOutcome::Kind::stillRunning, "stillRunning"},
    {FixOutcome::Kind::cancelled, "cancelled"},
    {FixOutcome::Kind::refused, "refused"},
}};

} // namespace

FixOutcome FixOutcome::fromAppleScriptError(std::int64_t number) {
    return number == userCanceled ? cancelled() : failed(std::to_string(number));
}

std::string FixOutcome::description() const {
    const std::string_view name = rowOf(outcomeKinds, kind_).rawValue;
    return kind_ == Kind::failed ? fmt::format("{}(\"{}\")", name, reason_) : std::string{name};
}

} // namespace pacelet
