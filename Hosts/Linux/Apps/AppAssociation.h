#pragma once

#include "Hosts/Linux/Apps/DesktopIndex.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace pacelet::Linux {

/// Why a process counts as part of an application, or why not.
enum class AssociationReason {
    kernelThread,
    service,
    sessionPart,
    insideTerminal,
    noApplication,
    appScope,
    entryProgram,
    entryFolder,
    box,
    container
};

/// The reason in words, for whoever asks.
std::string_view describe(AssociationReason reason);

enum class AppRole { none, main, helper };

/// The application that a process belongs to; none with the role `none`.
struct Association {
    AssociationReason reason = AssociationReason::noApplication;
    const DesktopApp* app = nullptr; ///< lives as long as the index that it came from
    AppRole role = AppRole::none;

    bool operator==(const Association&) const = default;
};

/// What an association rests on.
struct ProcessFacts {
    std::string_view executable; ///< the program's real path, or the script's
    std::string_view cgroup;     ///< text of `/proc/<pid>/cgroup`; empty when unknown
    bool hasTerminal = false;    ///< it is controlled by a terminal
    std::string_view parentExecutable;
    std::string_view parentAppID;   ///< the application of its parent; empty when it has none
    std::string_view starter{};     ///< name of the shell or interpreter of a script, else empty
    std::string_view commandLine{}; ///< with a NUL behind each argument; empty when unknown
    std::string_view parentStarter{};
};

/// The role of a process in an application of which no program is known: the first one that is no
/// mere shell leads.
AppRole roleInBox(const ProcessFacts& facts, std::string_view appID);

/// Finds the application: first the services and the session's own parts, which belong to none;
/// then the scope in which the desktop started it; then the entry whose program it is, or in whose
/// folder it lies. A program that is some other application's own is no helper of the one in whose
/// scope it was started, and neither is anything that runs inside a terminal.
Association associate(const DesktopIndex& index, const ProcessFacts& facts);

/// The path under which such a process appears:
/// "/Applications/<Name>.app/Contents/MacOS/<program>", a helper in "Contents/Frameworks" with its
/// `part` in brackets behind it when it has one, and the real path without an application.
std::string bundledPath(const Association& association, std::string_view executable,
                        std::string_view part = {});

} // namespace pacelet::Linux
