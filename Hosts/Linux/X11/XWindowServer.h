#pragma once

#include "Core/Platform/WindowServer.h"

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>

namespace pacelet::Linux::X11 {

/// The windows and displays of an X display server; of a Wayland session those programs that use
/// its X server. Connects anew for each question. A display is known by the number of its CRTC.
class XWindowServer final : public pacelet::WindowServer {
public:
    /// Gives the names under which applications appear, by pid.
    using NamesByPID = std::function<std::unordered_map<std::int32_t, std::string>()>;

    /// `display` as in DISPLAY; empty for none.
    XWindowServer(std::string display, NamesByPID applicationNames);

    std::optional<std::vector<WindowDictionary>> windowInfo() override;
    std::optional<std::vector<std::uint32_t>> activeDisplays(std::size_t maximum) override;

    /// Widths are those of the display's own modes, before any rotation.
    std::optional<std::int64_t> currentModeWidth(std::uint32_t display) override;
    std::optional<std::vector<std::int64_t>> modeWidths(std::uint32_t display) override;

private:
    std::string display_;
    NamesByPID applicationNames_;
};

} // namespace pacelet::Linux::X11
