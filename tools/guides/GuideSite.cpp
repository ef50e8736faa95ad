#include "tools/guides/GuideSite.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <tuple>

namespace pacelet::guides {

namespace {

/// Letters, digits and "-", "_", "." inside: nothing that leads out of the folder, that an address
/// would need to escape, or that a server hides.
bool isFolderName(std::string_view name) {
    return !name.empty() && name.front() != '.' && std::ranges::all_of(name, [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || character == '-' || character == '_' ||
               character == '.';
    });
}

/// By title as people read it.
std::vector<const CatalogEntry*> inOrder(std::span<const CatalogEntry> entries) {
    std::vector<const CatalogEntry*> ordered;
    for (const CatalogEntry& entry : entries) {
        if (!entry.guide.empty()) {
            ordered.push_back(&entry);
        }
    }
    const auto key = [](const CatalogEntry* entry) {
        return std::tuple{asciiLowercased(entry->title), entry->title, entry->guide};
    };
    std::ranges::sort(ordered, {}, key);
    return ordered;
}

} // namespace

std::map<std::string, std::string> guideSite(std::span<const CatalogEntry> entries) {
    std::map<std::string, std::string> files;
    const std::vector<const CatalogEntry*> ordered = inOrder(entries);
    for (std::size_t at = 0; at < ordered.size(); ++at) {
        const CatalogEntry& entry = *ordered[at];
        if (!isFolderName(entry.guide)) {
            throw GuideError{fmt::format("entry \"{}\": \"{}\" can't be the name of a page",
                                         entry.id, entry.guide)};
        }
        const GuideNeighbours neighbours{at > 0 ? ordered[at - 1] : nullptr,
                                         at + 1 < ordered.size() ? ordered[at + 1] : nullptr};
        const auto [place, isNew] = files.try_emplace("process/" + entry.guide + "/index.html",
                                                      guidePage(entry, neighbours));
        if (!isNew) {
            throw GuideError{
                fmt::format("entry \"{}\": there is another guide \"{}\"", entry.id, entry.guide)};
        }
    }
    files.emplace("index.html", indexPage(ordered));
    return files;
}

} // namespace pacelet::guides
