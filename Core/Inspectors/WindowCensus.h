#pragma once

#include "Core/Platform/WindowServer.h"

#include <cstdint>
#include <string>
#include <vector>

namespace pacelet {

/// How many windows a process has on screen.
struct WindowCount {
    std::string ownerName; ///< the owning application's name
    std::int32_t ownerPID = 0;
    std::int64_t count = 0;

    bool operator==(const WindowCount&) const = default;
};

struct DisplayInfo {
    std::int64_t count = 0;       ///< active displays
    std::int64_t scaledCount = 0; ///< those that do not run in the widest mode they offer

    bool operator==(const DisplayInfo&) const = default;
};

/// What makes the window server work: windows on screen and scaled displays.
namespace WindowCensus {

/// Normal windows on screen per process, most first, then by name, then as first met. A dictionary
/// that lacks what is needed is passed over.
std::vector<WindowCount> count(const std::vector<WindowDictionary>& windowInfo);

/// The windows of this moment; empty when the server does not answer.
std::vector<WindowCount> live(WindowServer& server);

/// The displays of this moment; zeros when the server does not answer.
DisplayInfo displays(WindowServer& server);

} // namespace WindowCensus

} // namespace pacelet
