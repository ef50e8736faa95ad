#pragma once

#include "Core/Platform/OperatingSystem.h"

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// A machine as it was seen: what it answered, and when.
namespace pacelet::Recorded {

/// When a look was taken, in seconds of `TimePoint` and of `MonotonicTime`.
struct Moment {
    double wall = 0;
    double monotonic = 0;

    bool operator==(const Moment&) const = default;
};

/// What a call was answered from this look on, until the next answer.
struct Answer {
    std::uint32_t look = 0;
    std::string value; ///< as `Wire` writes it

    bool operator==(const Answer&) const = default;
};

/// Some looks at one machine.
struct Capture {
    OperatingSystem system{};
    bool tellsPrograms = false;        ///< has a `ProgramKnowledge`
    bool listsBackgroundItems = false; ///< has a `BackgroundItemSource`
    std::vector<Moment> looks;         ///< never empty; neither clock goes back on the second one
    std::map<std::string, std::vector<Answer>> answers; ///< by call; those of one in their order

    bool operator==(const Capture&) const = default;
};

/// A file that holds no capture, or can be neither read nor written. `what()` is one line for the
/// user that does not name the file.
class CaptureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The file of a capture: a line that names its kind and version, and one frame of zstd with a
/// checksum.
namespace CaptureFile {

/// More than any machine answers in the looks of a day.
inline constexpr std::size_t largestFile = std::size_t{32} << 20;
inline constexpr std::size_t largestCapture = std::size_t{256} << 20;

std::string pack(Capture capture);

/// Throws `CaptureError`.
Capture unpack(std::string_view file);

/// What stands in the frame. Throws `CaptureError`.
Capture parse(std::string_view content);

/// Makes the file, which only the user may read; it must not be there. Throws `CaptureError`.
void write(const std::string& path, Capture capture);

/// Throws `CaptureError`.
Capture read(const std::string& path);

} // namespace CaptureFile

} // namespace pacelet::Recorded
