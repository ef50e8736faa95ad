#include "Hosts/Linux/Background/EnabledUnits.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <set>
#include <sys/stat.h>

namespace pacelet::Linux {

namespace {

bool isThere(const std::string& path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0;
}

class Reader {
public:
    Reader(const UnitFolders& folders, FileCache<UnitFile>& cache)
        : folders_{folders},
          cache_{cache} {}

    std::vector<EnabledUnit> read() {
        for (const UnitFolders::Enabling& folder : folders_.enabling) {
            for (const std::string& name : sortedNames(folder.path)) {
                if (name.ends_with(".wants") || name.ends_with(".requires")) {
                    addLinks(joinedPath(folder.path, name), folder.scope);
                }
            }
        }
        std::erase_if(units_, [&](const EnabledUnit& unit) {
            return unit.started != nullptr && names_.contains(startedName(unit));
        });
        return std::move(units_);
    }

private:
    void addLinks(const std::string& folder, ItemScope scope) {
        for (const std::string& name : sortedNames(folder)) {
            const bool counts = std::ranges::any_of(
                folders_.endings, [&](std::string_view ending) { return name.ends_with(ending); });
            if (!counts || names_.contains(name)) {
                continue;
            }
            EnabledUnit unit{name, fileOf(name, joinedPath(folder, name)), scope};
            unit.file = cached(unit.path);
            if (unit.file == nullptr) {
                continue; // masked, or a link to nowhere
            }
            if (!name.ends_with(".service")) {
                unit.started = cached(fileOf(startedName(unit), {}));
            }
            names_.insert(name);
            units_.push_back(std::move(unit));
        }
    }

    const UnitFile* cached(const std::string& path) { return cache_.get(path, parseUnitFile); }

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
        return unit.file->starts.empty() ? std::string{withoutExtension(unit.name)} + ".service"
                                         : unit.file->starts;
    }

    const UnitFolders& folders_;
    FileCache<UnitFile>& cache_;
    std::vector<EnabledUnit> units_;
    std::set<std::string, std::less<>> names_;
};

} // namespace

UnitFolders UnitFolders::ofSystem() {
    return {{{"/etc/systemd/system", ItemScope::systemDaemon}},
            {"/etc/systemd/system", "/run/systemd/system", "/usr/local/lib/systemd/system",
             "/usr/lib/systemd/system", "/lib/systemd/system"},
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
