#pragma once

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Sampling/ProcessGroup.h"
#include "Core/Support/Time.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// What slows the machine down, whenever it does: the same today and next week, whatever pid it
/// has.
struct Cause {
    FindingKind kind{};
    std::string id;   ///< path of the application; empty where there is none
    std::string name; ///< of the application or process; empty for what is about none

    bool operator==(const Cause&) const = default;
};

/// A cause as one look at the machine found it.
struct FoundCause {
    Cause cause;
    Severity severity{};
    /// What it used at that moment: bytes for memory, else CPU in percent of one core.
    double figure = 0;
};

/// What the diagnosis of `groups` found, each cause once, the gravest first. `stuckApp` is the one
/// that the rules were given.
std::vector<FoundCause> causesOf(const Diagnosis::WeighedResult& found,
                                 std::span<const ProcessGroup> groups,
                                 const std::optional<std::string>& stuckApp);

/// The group behind the cause as it runs now, or null.
const ProcessGroup* runningGroup(const Cause& cause, std::span<const ProcessGroup> groups);

/// What it is called, as "Spotlight" or "Google Chrome".
std::string_view titleOf(const Cause& cause);

/// The same where nothing says what it does: "low memory" rather than whose.
std::string_view plainTitleOf(const Cause& cause);

/// What it does to the machine, in a few words.
std::string_view effectOf(FindingKind kind);

/// How long, in short: "2 h 10 min", "12 min", "< 1 min".
std::string shortSpan(Seconds span);

/// The same in full: "2 hours and 10 minutes", "12 minutes".
std::string fullSpan(Seconds span);

/// How often: "once", "14 times".
std::string timesText(std::int64_t count);

} // namespace pacelet
