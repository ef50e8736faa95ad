#pragma once

#include "Core/Platform/WindowServer.h"

namespace pacelet::Mac {

/// The window list and display modes of CoreGraphics.
class MacWindowServer final : public WindowServer {
public:
    std::optional<std::vector<WindowDictionary>> windowInfo() override;
    std::optional<std::vector<std::uint32_t>> activeDisplays(std::size_t maximum) override;
    std::optional<std::int64_t> currentModeWidth(std::uint32_t display) override;
    std::optional<std::vector<std::int64_t>> modeWidths(std::uint32_t display) override;
};

} // namespace pacelet::Mac
