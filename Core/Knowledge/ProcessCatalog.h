#pragma once

#include "Core/Knowledge/CatalogEntry.h"
#include "Core/Knowledge/CatalogIndex.h"
#include "Core/Platform/BackgroundItem.h"
#include "Core/Platform/HostAbilities.h"
#include "Core/Sampling/ProcessGroup.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pacelet {

/// Where the program's resources are looked for, in this order.
struct ResourceLocations {
    std::filesystem::path mainFolder;     ///< the application's own resources
    std::filesystem::path resourceBundle; ///< the folder "Pacelet_Core.bundle"

    /// The locations of a program in `programFolder`: the installed tree's share folder first, then
    /// the bundle beside the program.
    static ResourceLocations beside(const std::filesystem::path& programFolder);
};

/// Who made a background item of which nobody knows.
inline constexpr std::string_view unknownDeveloper = "Unknown developer";

/// The store of knowledge: explains processes and background items, by fallback if it must.
/// Immutable once loaded, so any thread may read it.
struct ProcessCatalog {
    ProcessCatalog() = default;
    ProcessCatalog(std::vector<CatalogEntry> all,
                   OperatingSystem itsSystem = OperatingSystem::macOS,
                   HostAbilities itsAbilities = {})
        : entries{std::move(all)},
          system{itsSystem},
          abilities{std::move(itsAbilities)},
          index_{entries} {}

    std::vector<CatalogEntry> entries; ///< in file order: the first match wins
    OperatingSystem system = OperatingSystem::macOS;
    HostAbilities abilities{};

    /// Loads "processes.json" from the first location that has it. Throws `CatalogError`. Stops the
    /// program when the file is not in the main folder and there is no resource bundle at all.
    static ProcessCatalog bundled(const ResourceLocations& locations);

    /// The catalog for machines with this system: without the entries of others, and without the
    /// fixes that do not work there.
    ProcessCatalog on(OperatingSystem thisSystem, const HostAbilities& itsAbilities = {}) const;

    /// An exact name in any entry beats every path prefix. `appName` names the application that the
    /// process belongs to.
    Explanation explain(std::string_view name, std::string_view path,
                        const std::optional<std::string>& appName) const;

    /// Explains the group's primary member. What no entry claims is explained by the group's facts,
    /// as far as they tell anything.
    Explanation explain(const ProcessGroup& group) const;

    /// Explains a background item by its launchd label.
    Explanation explainLabel(std::string_view launchdLabel,
                             const std::optional<std::string>& ownerApp) const;

    /// Explains a background item: by its label; where it tells of itself, by the entry of its
    /// program or by what it tells; else by its owner.
    Explanation explain(const BackgroundItem& item) const;

    bool operator==(const ProcessCatalog&) const = default;

private:
    const CatalogEntry* entryFor(std::string_view name, std::string_view path) const;

    CatalogIndex index_;
};

} // namespace pacelet
