#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// The one place that decides whether the program may ever quit a process.
namespace pacelet::SafetyGate {

/// Names that are never quit, compared exactly.
inline constexpr std::array<std::string_view, 9> denyNames{
    "kernel_task", "WindowServer",   "launchd",       "loginwindow", "Dock",
    "Finder",      "SystemUIServer", "ControlCenter", "Pacelet"};

/// Executables below these folders belong to the system.
inline constexpr std::array<std::string_view, 4> protectedPrefixes{"/System/", "/usr/", "/sbin/",
                                                                   "/bin/"};

/// True only for a regular application of the current user that stands neither by its name nor by
/// its place under protection.
bool canQuit(std::uint32_t uid, std::uint32_t currentUID, std::string_view path,
             std::string_view name, bool isRegularApp);

} // namespace pacelet::SafetyGate
