#pragma once

#include "Core/Usage/Cause.h"

#include <cstdint>
#include <vector>

namespace pacelet {

/// What a minute notes of one cause.
struct CauseNote {
    Cause cause;
    Severity severity{}; ///< the gravest
    double seconds = 0;  ///< for which it stood; above 0, at most 60
    double mean = 0;     ///< of its figure, as in `FoundCause`
    double highest = 0;  ///< the same figure

    bool operator==(const CauseNote&) const = default;
};

/// One clock minute in which something slowed the machine down.
struct CauseMinute {
    std::int64_t t = 0;            ///< whole minutes since 1970-01-01 00:00 UTC
    std::vector<CauseNote> causes; ///< in the order in which they were first found; never empty

    bool operator==(const CauseMinute&) const = default;
};

} // namespace pacelet
