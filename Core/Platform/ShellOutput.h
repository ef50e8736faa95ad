#pragma once

#include <cstdint>
#include <string>
#include <system_error>

namespace pacelet {

/// A command-line tool that could not be started. `code()` tells why (no such file, no permission,
/// …).
class LaunchError : public std::system_error {
public:
    LaunchError(std::string executable, std::error_code reason);

    /// The path that was to be run.
    const std::string& executable() const { return executable_; }

private:
    std::string executable_;
};

namespace Shell {

/// The outcome of a finished command.
struct Output {
    std::int32_t status = 0; ///< exit status, or the number of the signal that ended the child
    std::string stdout;      ///< UTF-8; invalid sequences are replaced by U+FFFD
    std::string stderr;      ///< the same

    bool operator==(const Output&) const = default;
};

} // namespace Shell

} // namespace pacelet
