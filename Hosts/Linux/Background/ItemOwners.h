#pragma once

#include "Hosts/Linux/Apps/AppAssociation.h"
#include "Hosts/Linux/Knowledge/DpkgDatabase.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace pacelet::Linux {

/// Remembers which packages own files, until the database changes.
class PackageOwners {
public:
    explicit PackageOwners(const std::string& dpkgFolder)
        : dpkg_{dpkgFolder} {}

    /// Looks up all that is not known yet, in one go.
    void learn(std::span<const std::string> paths);

    /// Null for a file that no package owns, and for one that was not learnt.
    const Package* of(const std::string& path) const;

private:
    DpkgDatabase dpkg_;
    std::optional<std::int64_t> changed_;
    std::unordered_map<std::string, std::optional<Package>> known_;
};

/// True for what belongs to the system itself: the first program, its helpers, and what no
/// installation goes without. `package` may be null.
bool isOfBaseSystem(std::string_view unit, const Package* package);

} // namespace pacelet::Linux
