#pragma once

#include "Core/Knowledge/CatalogEntry.h"

#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace pacelet::guides {

/// A catalog of which no site can be made.
class GuideError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The files of the site by their paths below its folder: "index.html", and for each guide
/// "process/<guide>/index.html", which a web server gives out for "/process/<guide>". The pages
/// refer to "guides.css" and "logo.svg" beside the index, and to nothing else. An entry without a
/// guide has no page. Throws `GuideError` when a guide is no name of a folder, or stands twice.
std::map<std::string, std::string> guideSite(std::span<const CatalogEntry> entries);

/// What a page is made from, besides its entry.
struct GuideNeighbours {
    const CatalogEntry* previous = nullptr;
    const CatalogEntry* next = nullptr;
};

/// The page of one entry.
std::string guidePage(const CatalogEntry& entry, const GuideNeighbours& neighbours);

/// The list of all pages; `entries` in the order in which they are to stand.
std::string indexPage(std::span<const CatalogEntry* const> entries);

/// A whole document. `root` leads from it to the folder of the site: "" or "../../".
std::string document(std::string_view title, std::string_view description, std::string_view root,
                     std::string_view body);

} // namespace pacelet::guides
