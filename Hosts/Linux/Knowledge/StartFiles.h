#pragma once

#include "Hosts/Linux/Apps/DesktopCatalog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pacelet::Linux {

/// Who starts a program, the weightiest first.
enum class Starter {
    menu,    ///< a visible entry in the menu
    system,  ///< the system's service manager, or its bus
    session, ///< the desktop: at login, by the session's service manager or its bus
    person,  ///< what somebody set up in their own files
    nobody,  ///< an entry that no menu shows
};

/// What such a file says of the program that it starts. The texts are untranslated, and empty where
/// the file tells nothing.
struct StartFile {
    Starter starter = Starter::nobody;
    std::string id;      ///< the file's name without its ending
    std::string program; ///< the word that its command begins with; empty when it is a mere shell
    std::string name;
    std::string kind;          ///< generic name
    std::string comment;       ///< or the description of a service
    bool isShortLived = false; ///< it does one thing and ends: the program may serve others
};

/// The program of a command line, in which a service's may begin with marks. Empty for a mere shell
/// or interpreter.
std::string startedProgram(std::string_view command);

/// Reads the text of an entry (`.desktop`), a service of systemd or one of a bus, told by their
/// groups. Nothing for any other text.
std::optional<StartFile> parseStartFile(std::string_view text);

/// Where such files lie.
struct StartFolder {
    std::string path;
    Starter starter;
};

/// The folders of this machine and of the user's own, in order of precedence.
std::vector<StartFolder> startFolders(const DesktopPlaces& places, const std::string& configFolder);

/// What starts programs on this machine, found by the program, links resolved, or by the file.
class StartFiles {
public:
    StartFiles() = default;
    StartFiles(const std::vector<StartFolder>& folders, const DesktopPlaces& places);

    /// The entry, if there is one, and the service that start this program; null without one. A
    /// program that several services start in different ways is none's.
    const StartFile* entryOf(const std::string& program) const;
    const StartFile* serviceOf(const std::string& program) const;

    const StartFile* entryNamed(const std::string& id) const;
    const StartFile* serviceNamed(const std::string& id) const;

    /// Who starts this program at all; nothing when no file does.
    std::optional<Starter> starterOf(const std::string& program) const;

private:
    using Places = std::unordered_map<std::string, std::size_t>;

    void read(const StartFolder& folder, const DesktopPlaces& places);
    void take(StartFile file, bool isEntry, const DesktopPlaces& places);
    const StartFile* find(const Places& places, const std::string& key) const;

    std::vector<StartFile> files_;
    Places entries_; ///< by program
    Places services_;
    Places entryIDs_;
    Places serviceIDs_;
    std::unordered_map<std::string, Starter> starters_;
};

} // namespace pacelet::Linux
