#pragma once

#include "Core/Internet/SpeedResult.h"
#include "Core/Platform/Clock.h"
#include "Core/Platform/ToolRunner.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// A speed test that gave no result.
class SpeedTestError : public std::runtime_error {
public:
    enum class Kind {
        failed,    ///< the tool ended with a status other than 0
        unreadable ///< its output is not JSON of the expected shape
    };

    /// `text` is the tool's error output, without blanks and line ends around it.
    static SpeedTestError failed(const std::string& text) { return {Kind::failed, text}; }
    static SpeedTestError unreadable() { return {Kind::unreadable, {}}; }

    Kind kind() const { return kind_; }
    const std::string& text() const { return text_; }

    friend bool operator==(const SpeedTestError& left, const SpeedTestError& right) {
        return left.kind_ == right.kind_ && left.text_ == right.text_;
    }

private:
    SpeedTestError(Kind kind, const std::string& text);

    Kind kind_;
    std::string text_;
};

/// Measures the internet connection with `/usr/bin/networkQuality`.
namespace SpeedTest {

/// Machine-readable output, and a limit of 25 seconds that the tool itself keeps.
const std::vector<std::string>& arguments();

/// Reads the tool's JSON summary, which counts in bits per second. Throws
/// `SpeedTestError::unreadable` without both throughputs. The responsiveness and the idle round
/// trip stay absent when they are no number, or when the former does not fit 64 bits.
SpeedResult parse(std::string_view json, TimePoint measuredAt);

/// Runs one test to its end, for about half a minute. Blocks. Throws `SpeedTestError` or
/// `LaunchError`.
SpeedResult run(ToolRunner& tools, Clock& clock);

} // namespace SpeedTest

} // namespace pacelet
