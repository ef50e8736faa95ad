#pragma once

#include "Hosts/Linux/Apps/DesktopApp.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pacelet::Linux {

/// The applications of a desktop, found by id, by program and by folder. Immutable.
class DesktopIndex {
public:
    DesktopIndex() = default;

    /// `apps` in order of precedence. Where two share a name but not a program, the later one gets
    /// its id behind it; a folder that belongs to two programs is neither's own.
    explicit DesktopIndex(std::vector<DesktopApp> apps);

    std::span<const DesktopApp> apps() const { return apps_; }

    /// Null when there is none. Pointers live as long as the index.
    const DesktopApp* byID(std::string_view id) const;
    const DesktopApp* byProgram(std::string_view executable) const;

    /// The application with a switch such as "--writer" that stands on the command line, among
    /// those that lie in one folder with this program.
    const DesktopApp* bySwitch(std::string_view executable, std::string_view commandLine) const;

    /// The application in whose own folder, or below it, the program lies.
    const DesktopApp* byFolder(std::string_view executable) const;

private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>{}(text);
        }
    };
    using Places = std::unordered_map<std::string, std::size_t, TextHash, std::equal_to<>>;

    void makeNamesUnique();
    void dropSharedFolders();
    void prefer(Places& places, const std::string& key, std::size_t place);
    const DesktopApp* find(const Places& places, std::string_view key) const;

    std::vector<DesktopApp> apps_;
    Places byID_;
    Places byProgram_;
    Places byFolder_;
};

} // namespace pacelet::Linux
