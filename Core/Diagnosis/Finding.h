#pragma once

#include "Core/Knowledge/FixID.h"
#include "Core/Sampling/ProcessGroup.h"
#include "Core/Sampling/SystemSignals.h"
#include "Core/Support/Time.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// How grave a finding is, in rising order.
enum class Severity { low = 1, medium = 2, high = 3, critical = 4 };

/// What sort of finding it is. The first eleven come from the machine, the last six from the
/// internet check.
enum class FindingKind {
    heat,
    memory,
    cpuHog,
    spotlight,
    photos,
    windowServer,
    browser,
    lowDisk,
    longUptime,
    lowPower,
    stuckApp,
    offline,
    weakWiFi,
    band24,
    slowLine,
    laggy,
    bandwidthHog,
};

std::string_view rawValue(FindingKind kind);
std::optional<FindingKind> kindFromRawValue(std::string_view rawValue);

/// Name of the icon glyph of the kind.
std::string_view symbol(FindingKind kind);

std::string_view rawValue(Severity severity);
std::optional<Severity> severityFromRawValue(std::string_view rawValue);

/// One cause, with its sentences finished: no screen composes them.
class Finding {
public:
    struct Fields {
        FindingKind kind{};
        Severity severity{};
        std::string headline;
        std::string detail;
        std::optional<std::string> groupID;
        std::optional<FixID> primaryFix;
        std::optional<std::string> leaveNote;

        bool operator==(const Fields&) const = default;
    };

    explicit Finding(Fields fields);

    /// The raw value of the kind, and ":" and the group's id when there is one. Two findings of one
    /// run may share it.
    const std::string& id() const { return id_; }
    FindingKind kind() const { return fields_.kind; }
    Severity severity() const { return fields_.severity; }
    const std::string& headline() const { return fields_.headline; }
    const std::string& detail() const { return fields_.detail; }
    /// Id of the group that it is about, or "pid:" and a pid.
    const std::optional<std::string>& groupID() const { return fields_.groupID; }
    const std::optional<FixID>& primaryFix() const { return fields_.primaryFix; }
    const std::optional<std::string>& leaveNote() const { return fields_.leaveNote; }

    bool operator==(const Finding&) const = default;

private:
    std::string id_;
    Fields fields_;
};

/// The state of the machine in one word.
enum class Status { quiet, busy, struggling };

/// Quiet without findings, struggling with a high or critical one, busy otherwise.
Status statusOf(std::span<const Finding> findings);

/// What the rules are given.
struct DiagnosisInput {
    SystemSignals signals;
    std::span<const ProcessGroup> groups; ///< busiest first; the caller keeps them alive
    std::optional<TimePoint> spotlightBusySince{};
    bool lowPowerMode = false;
    std::optional<std::string> stuckApp{}; ///< name of an application that refused to quit
    TimePoint now{};
};

/// What the rules return.
struct DiagnosisResult {
    Status status = Status::quiet;
    std::vector<Finding> findings; ///< gravest first

    /// How many further causes are ever shown.
    static constexpr std::size_t mostFurtherCauses = 4;

    /// The one cause that the program leads with; null when all is quiet.
    const Finding* hero() const { return findings.empty() ? nullptr : &findings.front(); }

    /// The causes behind the hero, at most four.
    std::span<const Finding> more() const;

    bool operator==(const DiagnosisResult&) const = default;
};

} // namespace pacelet
