#pragma once

#include "Core/Support/Time.h"

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace pacelet::report {

/// What the command line asks for.
struct Options {
    /// Captured output of `ps` instead of the live machine; "-" is standard input.
    std::optional<std::string> psFile;
    std::optional<std::string> laterPSFile; ///< a second one, taken `seconds` later
    Seconds seconds{3};
    std::optional<std::int64_t> cores;   ///< of the machine that a table comes from
    std::optional<std::string> scenario; ///< name of a simulated Mac instead of the live machine
    std::optional<Seconds> since;        ///< what slowed the machine since then, instead of now
    bool json = false;
    bool why = false; ///< why each process stands where it does, too
    bool help = false;
    std::optional<std::string> captureFile; ///< where to keep what this machine answers
    std::optional<std::string> replayFile;  ///< a captured machine instead of the live one
    std::optional<std::int64_t> looks;      ///< how many to capture

    bool operator==(const Options&) const = default;
};

/// A command line that makes no sense; `what()` is one line for the user.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the arguments behind the program's name. Throws `UsageError`.
Options parseOptions(std::span<const std::string_view> arguments);

/// The text that `--help` prints.
std::string_view usageText();

} // namespace pacelet::report
