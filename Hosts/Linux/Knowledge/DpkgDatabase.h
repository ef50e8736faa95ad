#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace pacelet::Linux {

/// An installed package, as the package manager's own files tell of it.
struct Package {
    std::string name;
    std::string description; ///< its short one, of one line
    bool isBase = false;     ///< no installation, or none that is not bare, goes without it

    bool operator==(const Package&) const = default;
};

/// Calls `visit(path)` for each of the `wanted` paths that the text of a package's list of files
/// holds.
void forEachListed(std::string_view list, const std::unordered_set<std::string_view>& wanted,
                   const std::function<void(std::string_view)>& visit);

/// Calls `visit(package)` for each package in the text of the status file that is described.
void forEachPackage(std::string_view status, const std::function<void(Package)>& visit);

/// Debian's database of what is installed: text files that everybody may read. It is looked
/// through from end to end for many questions at once; nothing of it is kept.
class DpkgDatabase {
public:
    /// `folder` is "/var/lib/dpkg" but in tests.
    explicit DpkgDatabase(std::string folder)
        : folder_{std::move(folder)} {}

    /// The file that every change of the database replaces.
    std::string statusFile() const { return folder_ + "/status"; }

    /// The packages that own these files; a file that none owns is missing.
    std::unordered_map<std::string, Package> owners(std::span<const std::string> paths) const;

private:
    std::unordered_map<std::string, std::string>
    namesOfOwners(std::span<const std::string> paths) const;

    std::string folder_;
};

} // namespace pacelet::Linux
