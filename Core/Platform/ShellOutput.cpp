#include "Core/Platform/ShellOutput.h"

#include <utility>

namespace pacelet {

LaunchError::LaunchError(std::string executable, std::error_code reason)
    : std::system_error{reason, "couldn't start " + executable},
      executable_{std::move(executable)} {}

} // namespace pacelet
