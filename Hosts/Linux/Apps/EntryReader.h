#pragma once

#include "Hosts/Linux/Apps/DesktopApp.h"

#include <optional>
#include <string>
#include <vector>

namespace pacelet::Linux {

struct DesktopPlaces;
struct DesktopEntry;

/// Turns entry files into applications: finds the program that an entry really starts, and the
/// folder that belongs to it.
class EntryReader {
public:
    /// `places` must outlive it.
    explicit EntryReader(const DesktopPlaces& places)
        : places_{places} {}

    /// Nothing for a file that is no entry, for one that no menu shows, for a command-line tool in
    /// a terminal, and for one whose program is not there.
    std::optional<DesktopApp> read(const std::string& file, std::string id) const;

private:
    void placeProgram(DesktopApp& app, const std::string& program,
                      const std::vector<std::string>& command) const;
    static std::string helperFolder(const DesktopApp& app);
    void placeCompanion(DesktopApp& app, const std::string& script) const;

    const DesktopPlaces& places_;
};

} // namespace pacelet::Linux
