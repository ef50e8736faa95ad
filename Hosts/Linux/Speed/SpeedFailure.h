#pragma once

#include <stdexcept>

namespace pacelet::Linux {

/// Why a speed test gave no result, in a few words for a log.
class SpeedFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace pacelet::Linux
