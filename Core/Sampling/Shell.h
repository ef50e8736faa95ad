#pragma once

#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

namespace pacelet {

/// A child process that could not be started. `code()` tells why (no such file, no permission, …).
class LaunchError : public std::system_error {
public:
    LaunchError(std::string executable, std::error_code reason);

    /// The path that was to be run.
    const std::string& executable() const { return executable_; }

private:
    std::string executable_;
};

/// A small synchronous runner of command-line tools.
namespace Shell {

/// The outcome of a finished command.
struct Output {
    std::int32_t status = 0; ///< exit status, or the number of the signal that ended the child
    std::string stdout;      ///< UTF-8; invalid sequences are replaced by U+FFFD
    std::string stderr;      ///< the same

    bool operator==(const Output&) const = default;
};

/// Runs the program at the absolute path `executable` to its end and collects what it wrote. Blocks
/// with no time limit, so never on the UI thread; safe to call from many threads at a time. The
/// child inherits environment, working directory and standard input, and no other descriptor.
/// Standard output is read to its end before standard error. Throws `LaunchError`.
Output run(const std::string& executable, const std::vector<std::string>& arguments);

} // namespace Shell

} // namespace pacelet
