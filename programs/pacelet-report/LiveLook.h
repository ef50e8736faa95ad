#pragma once

#include "Core/Platform/Platform.h"
#include "programs/pacelet-report/Answer.h"

namespace pacelet::report {

/// Two looks at a live machine, so that CPU figures tell what happens now. Takes some seconds.
Look lookAtMachine(const Platform& machine, const ProcessCatalog& catalog);

} // namespace pacelet::report
