#pragma once

#include "Core/Platform/Clock.h"
#include "Core/Platform/Kernel.h"
#include "Core/Platform/ToolRunner.h"
#include "tools/pacelet-report/Answer.h"

namespace pacelet::report {

/// Two looks at a live machine, so that CPU figures tell what happens now. Takes some seconds.
Look lookAtMachine(ToolRunner& tools, Kernel& kernel, Clock& clock, const ProcessCatalog& catalog);

} // namespace pacelet::report
