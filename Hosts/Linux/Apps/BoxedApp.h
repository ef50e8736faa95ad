#pragma once

#include "Hosts/Linux/Apps/DesktopApp.h"

#include <optional>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// How an application that no menu entry tells about is kept apart from the rest.
enum class BoxKind { package, container };

/// An application that brings its own world along.
struct BoxedApp {
    BoxKind kind = BoxKind::package;
    DesktopApp app; ///< without a program or a folder

    bool operator==(const BoxedApp&) const = default;
};

/// The AppImage, Flatpak, Snap or container that a process runs in, by its program and the text of
/// `/proc/<pid>/cgroup`; nothing for a process in none. An AppImage is named by the entry that lies
/// in it, a container by the beginning of its id.
std::optional<BoxedApp> boxedApp(std::string_view executable, std::string_view cgroup);

/// True for the file of an AppImage, which runs for as long as its contents are in use.
bool isAppImageFile(std::string_view executable);

} // namespace pacelet::Linux
