#pragma once

#include "programs/pacelet-report/Answer.h"
#include "programs/pacelet-report/Options.h"

#include <cstdint>

namespace pacelet::report {

/// Looks at the captured tables that the options name, as user `uid`. Throws `FileError` when they
/// cannot be read, hold no process, or tell no use of CPU.
Look lookAtTables(const Options& options, std::uint32_t uid);

} // namespace pacelet::report
