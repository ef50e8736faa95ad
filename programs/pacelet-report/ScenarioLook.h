#pragma once

#include "programs/pacelet-report/Answer.h"

#include <string>

namespace pacelet::report {

/// Looks at a simulated Mac after it has been watched for some virtual hours, so that what builds
/// up over time has built up. Throws `UsageError`, which lists the names, when there is no such
/// scenario.
Look lookAtScenario(const std::string& name, const ProcessCatalog& catalog);

} // namespace pacelet::report
