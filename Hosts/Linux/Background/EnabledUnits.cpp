#include "Hosts/Linux/Background/EnabledUnits.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sys/stat.h>
#include <unordered_map>
#include <utility>

namespace pacelet::Linux {

namespace {

bool isThere(const std::string& path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0;
}

bool isLink(const std::string& path) {
    struct stat facts {};
    return ::lstat(path.c_str(), &facts) == 0 && S_ISLNK(facts.st_mode);
}

/// A unit by the name that its file has: "b@x.service" of "a@x.service" where the file of the
/// template "a@" is a link to that of "b@".
std::string nameOfFile(const std::string& name, const std::string& file) {
    std::string own{lastPathComponent(file)};
    if (own == name || own == templateOf(name) ||
        own.substr(own.rfind('.') + 1) != name.substr(name.rfind('.') + 1)) {
        return name;
    }
    const std::size_t instance = name.find('@') + 1;
    const std::size_t place = own.find("@.");
    return place == own.npos || instance == 0
               ? own
               : own.insert(place + 1, name, instance, name.rfind('.') - instance);
}

class Reader {
public:
    Reader(const UnitFolders& folders, FileCache<UnitFile>& cache)
        : folders_{folders},
          cache_{cache} {
        for (const std::string& folder : folders.files) {
            for (std::string& name : sortedNames(folder)) {
                if (name.ends_with(".d")) {
                    pieceFolders_[std::move(name)].push_back(folder);
                }
            }
        }
    }

    std::vector<EnabledUnit> read() {
        for (const UnitFolders::Enabling& folder : folders_.enabling) {
            const std::vector<std::string> names = sortedNames(folder.path);
            for (const std::string& name : names) {
                if (name.ends_with(".wants") || name.ends_with(".requires")) {
                    addLinks(joinedPath(folder.path, name), folder.scope);
                }
            }
            for (const std::string& name : names) {
                addAlias(name, folder);
            }
        }
        std::erase_if(units_, [&](const EnabledUnit& unit) {
            return unit.started && names_.contains(startedName(unit));
        });
        return std::move(units_);
    }

private:
    void addLinks(const std::string& folder, ItemScope scope) {
        for (const std::string& name : sortedNames(folder)) {
            add(name, joinedPath(folder, name), scope);
        }
    }

    void addAlias(const std::string& name, const UnitFolders::Enabling& folder) {
        const std::string path = joinedPath(folder.path, name);
        if (!counts(name) || name.starts_with("dbus-") || !isLink(path)) {
            return;
        }
        std::error_code error;
        const auto file = std::filesystem::canonical(path, error);
        // A link under the unit's own name only tells where its file is.
        if (!error && nameOfFile(name, file.native()) != name) {
            add(name, path, folder.scope);
        }
    }

    bool counts(const std::string& name) const {
        return std::ranges::any_of(folders_.endings,
                                   [&](std::string_view ending) { return name.ends_with(ending); });
    }

    void add(const std::string& link, const std::string& path, ItemScope scope) {
        if (!counts(link) || links_.contains(link)) {
            return;
        }
        auto [name, file] = ownFile(link, fileOf(link, path));
        const auto parsed = read(name, file);
        if (!parsed) {
            return; // masked, or a link to nowhere
        }
        links_.insert(link);
        if (!names_.insert(name).second) {
            return;
        }
        EnabledUnit unit{std::move(name), std::move(file), scope, *parsed};
        if (!unit.name.ends_with(".service")) {
            const std::string started = startedName(unit);
            unit.started = read(started, fileOf(started, {})).value_or(UnitFile{});
        }
        units_.push_back(std::move(unit));
    }

    /// The name that the unit has of its own, and its file, links resolved where they lead to that.
    static std::pair<std::string, std::string> ownFile(const std::string& name,
                                                       const std::string& file) {
        std::error_code error;
        const std::filesystem::path real =
            isLink(file) ? std::filesystem::canonical(file, error) : std::filesystem::path{file};
        if (error) {
            return {name, file};
        }
        std::string own = nameOfFile(name, real.native());
        return own == name ? std::pair{name, file} : std::pair{std::move(own), real.string()};
    }

    /// The unit with the pieces that change it; nothing without its file.
    std::optional<UnitFile> read(const std::string& name, const std::string& path) {
        const UnitFile* const file = cache_.get(path, parseUnitFile);
        if (file == nullptr) {
            return std::nullopt;
        }
        UnitFile unit = *file;
        std::map<std::string, std::string> pieces; // by name: one hides those of later folders
        for (const std::string& beside : pieceFolders(name)) {
            const auto found = pieceFolders_.find(beside);
            if (found == pieceFolders_.end()) {
                continue;
            }
            // What is told of fewer units counts more.
            std::map<std::string, std::string> closer;
            for (const std::string& folder : found->second) {
                const std::string whole = joinedPath(folder, beside);
                for (const std::string& piece : sortedNames(whole)) {
                    if (piece.ends_with(".conf")) {
                        closer.try_emplace(piece, joinedPath(whole, piece));
                    }
                }
            }
            closer.merge(pieces);
            pieces = std::move(closer);
        }
        for (const auto& [piece, where] : pieces) {
            if (const UnitFile* const changes = cache_.get(where, parseUnitFile)) {
                change(unit, *changes);
            }
        }
        return unit;
    }

    /// Where the manager finds the unit, or its template; `link` when that is nowhere.
    std::string fileOf(const std::string& name, const std::string& link) const {
        for (const std::string& candidate : {name, templateOf(name)}) {
            for (const std::string& folder : folders_.files) {
                if (std::string path = joinedPath(folder, candidate);
                    !candidate.empty() && isThere(path)) {
                    return path;
                }
            }
        }
        return link;
    }

    static std::string startedName(const EnabledUnit& unit) {
        return unit.file.starts.empty() ? std::string{withoutExtension(unit.name)} + ".service"
                                        : unit.file.starts;
    }

    const UnitFolders& folders_;
    FileCache<UnitFile>& cache_;
    /// In which of the folders there are pieces under a name.
    std::unordered_map<std::string, std::vector<std::string>> pieceFolders_;
    std::vector<EnabledUnit> units_;
    std::set<std::string, std::less<>> links_;
    std::set<std::string, std::less<>> names_;
};

} // namespace

UnitFolders UnitFolders::ofSystem() {
    // What starts by a script alone has a unit that is made of it when the machine starts.
    const std::string ofScripts = "/run/systemd/generator.late";
    return {
        {{"/etc/systemd/system", ItemScope::systemDaemon}, {ofScripts, ItemScope::systemDaemon}},
        {"/etc/systemd/system", "/run/systemd/system", "/usr/local/lib/systemd/system",
         "/usr/lib/systemd/system", "/lib/systemd/system", ofScripts},
        {".service", ".timer"}};
}

UnitFolders UnitFolders::ofUser(const std::string& configFolder, const std::string& dataFolder) {
    const std::string own = joinedPath(configFolder, "systemd/user");
    return {{{own, ItemScope::userAgent}, {"/etc/systemd/user", ItemScope::systemAgent}},
            {own, "/etc/systemd/user", "/run/systemd/user", joinedPath(dataFolder, "systemd/user"),
             "/usr/local/lib/systemd/user", "/usr/lib/systemd/user"},
            {".service", ".timer", ".socket", ".path"}};
}

std::vector<EnabledUnit> enabledUnits(const UnitFolders& folders, FileCache<UnitFile>& cache) {
    return Reader{folders, cache}.read();
}

} // namespace pacelet::Linux
