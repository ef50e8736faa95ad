#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace pacelet {

/// One value of a window dictionary.
using WindowValue = std::variant<std::int64_t, double, bool, std::string>;

/// What the window server says of one window, by key ("kCGWindowLayer", "kCGWindowOwnerPID", …).
using WindowDictionary = std::map<std::string, WindowValue>;

/// Windows and displays as the window server knows them. Any thread; may block for a moment.
class WindowServer {
public:
    virtual ~WindowServer() = default;

    /// All windows on screen, front to back, or nothing when the server does not answer.
    virtual std::optional<std::vector<WindowDictionary>> windowInfo() = 0;

    /// Ids of the active displays, at most `maximum` of them; nothing on an error.
    virtual std::optional<std::vector<std::uint32_t>> activeDisplays(std::size_t maximum) = 0;

    /// Width in pixels of the display's current mode, or nothing.
    virtual std::optional<std::int64_t> currentModeWidth(std::uint32_t display) = 0;

    /// Widths in pixels of all modes of the display, or nothing.
    virtual std::optional<std::vector<std::int64_t>> modeWidths(std::uint32_t display) = 0;
};

} // namespace pacelet
