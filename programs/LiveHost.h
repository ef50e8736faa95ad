#pragma once

// The host of the machine that the programs are built for.

#ifdef __APPLE__

#include "Hosts/Mac/MacHost.h"

namespace pacelet {

using LiveHost = Mac::MacHost;

inline std::filesystem::path ownProgram() {
    return Mac::ownProgram();
}

} // namespace pacelet

#else

#include "Hosts/Linux/LinuxHost.h"

#include <filesystem>

namespace pacelet {

using LiveHost = Linux::LinuxHost;

inline std::filesystem::path ownProgram() {
    return Linux::LinuxSettings::ownProgram();
}

} // namespace pacelet

#endif
