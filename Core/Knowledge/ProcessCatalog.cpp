#include "Core/Knowledge/ProcessCatalog.h"

#include "Core/Knowledge/CatalogFile.h"
#include "Core/Knowledge/LocalExplanation.h"
#include "Core/Platform/HostWords.h"
#include "Core/Support/Precondition.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <system_error>

namespace pacelet {

namespace {

/// Executables below these folders are the system's own. Narrower than what the safety gate
/// protects: nothing here reaches below "/usr/local/".
constexpr std::array<std::string_view, 6> systemPrefixes{"/System/", "/usr/libexec/", "/usr/sbin/",
                                                         "/sbin/",   "/usr/bin/",     "/bin/"};

Explanation explanationOf(const CatalogEntry& entry) {
    Explanation explanation;
    explanation.entryID = entry.id;
    explanation.title = entry.title;
    explanation.summary = entry.summary;
    explanation.whyHigh = entry.whyHigh;
    explanation.verdict = entry.verdict;
    explanation.idleNote = entry.idleNote;
    explanation.fixes = entry.fixes;
    explanation.guide = entry.guide;
    explanation.symbol = entry.symbol.value_or(std::string{defaultSymbol});
    return explanation;
}

Explanation fallback(std::string title, std::string summary, Verdict verdict) {
    Explanation explanation;
    explanation.title = std::move(title);
    explanation.summary = std::move(summary);
    explanation.verdict = verdict;
    explanation.symbol = defaultSymbol;
    explanation.isFallback = true;
    return explanation;
}

/// Every text of an entry that a user reads.
void reword(CatalogEntry& entry, OperatingSystem system) {
    for (std::string* const text : {&entry.title, &entry.summary, &entry.whyHigh}) {
        *text = HostWords::on(system, *text);
    }
    if (entry.idleNote) {
        entry.idleNote = HostWords::on(system, *entry.idleNote);
    }
}

Explanation processFallback(std::string_view path, const std::optional<std::string>& appName,
                            OperatingSystem system) {
    // Elsewhere these folders hold whatever was installed, too.
    if (system == OperatingSystem::macOS && std::ranges::any_of(systemPrefixes, [&](auto prefix) {
            return path.starts_with(prefix);
        })) {
        return fallback("Part of macOS", "A built-in macOS process.", Verdict::leave);
    }
    if (appName) {
        Explanation explanation = fallback(
            "Part of " + *appName,
            "Belongs to " + *appName + ". Quitting " + *appName + " stops it.", Verdict::safe);
        explanation.fixes = {FixID::quitApp};
        return explanation;
    }
    return fallback("Not in our list yet", "We don't have an explanation for this process yet.",
                    Verdict::review);
}

bool anyPrefixOf(const std::vector<std::string>& prefixes, std::string_view text) {
    return std::ranges::any_of(prefixes,
                               [&](const std::string& prefix) { return text.starts_with(prefix); });
}

} // namespace

ResourceLocations ResourceLocations::beside(const std::filesystem::path& programFolder) {
    return {programFolder.parent_path() / "share" / "pacelet",
            programFolder / "Pacelet_Core.bundle"};
}

ProcessCatalog ProcessCatalog::bundled(const ResourceLocations& locations) {
    const char* const fileName = "processes.json";
    std::error_code error;
    const std::filesystem::path main = locations.mainFolder / fileName;
    if (std::filesystem::exists(main, error)) {
        return {CatalogFile::read(main)};
    }
    precondition(std::filesystem::is_directory(locations.resourceBundle, error),
                 "unable to find bundle named Pacelet_Core");
    return {CatalogFile::read(locations.resourceBundle / fileName)};
}

ProcessCatalog ProcessCatalog::on(OperatingSystem thisSystem,
                                  const HostAbilities& itsAbilities) const {
    std::vector<CatalogEntry> those;
    std::ranges::copy_if(entries, std::back_inserter(those), [&](const CatalogEntry& entry) {
        return entry.system.value_or(thisSystem) == thisSystem;
    });
    for (CatalogEntry& entry : those) {
        std::erase_if(entry.fixes, [&](FixID fix) { return !offered(fix, itsAbilities); });
        if (thisSystem != OperatingSystem::macOS) {
            reword(entry, thisSystem);
        }
    }
    return {std::move(those), thisSystem, itsAbilities};
}

const CatalogEntry* ProcessCatalog::entryFor(std::string_view name, std::string_view path) const {
    const CatalogEntry* const named = index_.withName(entries, name);
    return named != nullptr ? named : index_.withPrefixOf(entries, path);
}

Explanation ProcessCatalog::explain(std::string_view name, std::string_view path,
                                    const std::optional<std::string>& appName) const {
    const CatalogEntry* const entry = entryFor(name, path);
    return entry != nullptr ? explanationOf(*entry) : processFallback(path, appName, system);
}

Explanation ProcessCatalog::explain(const ProcessGroup& group) const {
    const ProcessUsage& primary = group.primary();
    const auto appName = group.appPath ? std::optional{group.displayName} : std::nullopt;
    if (group.facts != nullptr && entryFor(primary.name, primary.path) == nullptr) {
        if (auto local = LocalExplanation::make(*group.facts, primary.name, appName)) {
            return *std::move(local);
        }
    }
    return explain(primary.name, primary.path, appName);
}

Explanation ProcessCatalog::explainLabel(std::string_view launchdLabel,
                                         const std::optional<std::string>& ownerApp) const {
    for (const CatalogEntry& entry : entries) {
        if (anyPrefixOf(entry.match.launchdLabels, launchdLabel)) {
            return explanationOf(entry);
        }
    }
    if (ownerApp) {
        return fallback("Added by " + *ownerApp,
                        "A background helper installed by " + *ownerApp + ".", Verdict::review);
    }
    return fallback(std::string{unknownDeveloper},
                    "A background helper from a developer Pacelet doesn't recognize.",
                    Verdict::review);
}

Explanation ProcessCatalog::explain(const BackgroundItem& item) const {
    Explanation byLabel = explainLabel(item.label, item.ownerApp);
    if (!byLabel.isFallback || !item.facts) {
        return byLabel;
    }
    if (item.program) {
        if (const CatalogEntry* const entry =
                entryFor(lastPathComponent(*item.program), *item.program)) {
            return explanationOf(*entry);
        }
    }
    // What stands in front of the label's ending is a name fit to be read.
    return LocalExplanation::make(*item.facts, withoutExtension(item.label), item.ownerApp)
        .value_or(std::move(byLabel));
}

} // namespace pacelet
