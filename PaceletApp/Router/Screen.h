#pragma once

#include "Core/Support/EnumTable.h"

#include <array>
#include <optional>
#include <string_view>

namespace pacelet {

/// The destinations of the sidebar, in its order.
enum class Screen { overview = 0, processes = 1, backgroundItems = 2, internet = 3, usage = 4 };

struct ScreenRow {
    Screen value;
    std::string_view rawValue; ///< the screen's name in QML
    std::string_view title;
    std::string_view symbol;
};

inline constexpr std::array<ScreenRow, 5> screens{{
    {Screen::overview, "overview", "Overview", "square.grid.2x2"},
    {Screen::processes, "processes", "Processes", "waveform.path.ecg"},
    {Screen::backgroundItems, "backgroundItems", "Background Items", "square.stack.3d.up"},
    {Screen::internet, "internet", "Internet", "wifi"},
    {Screen::usage, "usage", "Usage", "chart.xyaxis.line"},
}};

constexpr std::string_view rawValue(Screen screen) {
    return rowOf(screens, screen).rawValue;
}

constexpr std::optional<Screen> screenFromRawValue(std::string_view rawValue) {
    return fromRawValue<Screen>(screens, rawValue);
}

/// Where the screen stands, from 1: the digit of its keyboard shortcut.
constexpr int position(Screen screen) {
    return static_cast<int>(screen) + 1;
}

} // namespace pacelet
