#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// An application that a menu shows, with what its processes are known by.
struct DesktopApp {
    std::string id;      ///< name of its entry, without ".desktop"
    std::string name;    ///< for the user, and fit for the name of a folder
    std::string program; ///< what it starts, links resolved; empty when that is no program of its
                         ///< own, but a script or another program's argument
    std::string folder;  ///< holds nothing but this application's programs; empty without one
    bool isTerminal = false;
    std::size_t argumentCount = 0; ///< of its command line: the plainest of several entries counts

    std::string argument; ///< the only one, if there is but one

    bool operator==(const DesktopApp&) const = default;
};

/// "/Applications/<name>.app"; a container is part of the system.
std::string bundlePath(const DesktopApp& app);

/// The name under which an entry's application appears: a well-known one by its id, else the
/// entry's own made fit for a folder. Empty when nothing is left of it.
std::string bundleName(std::string_view desktopID, std::string_view entryName);

/// The folder above `program` that is its application's own, or nothing (empty) when it lies in a
/// folder that many share. `home` is the user's home folder.
std::string privateFolder(std::string_view program, std::string_view home);

/// True when `executable` is the application's main program, and not one of its helpers by name.
bool isMainProgram(const DesktopApp& app, std::string_view executable);

} // namespace pacelet::Linux
