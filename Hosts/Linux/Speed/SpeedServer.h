#pragma once

#include <string>

namespace pacelet::Linux {

/// Whom a speed test is measured against.
struct SpeedServer {
    /// Address of the JSON document that names the files to load and the way up. All of a test
    /// keeps to its scheme, so that a test over https is never led off it.
    std::string configuration = standardConfiguration();
    std::string
        certificates{}; ///< PEM file to trust in place of the system's; empty for the latter

    /// The one that the program was built for.
    static std::string standardConfiguration();
};

} // namespace pacelet::Linux
