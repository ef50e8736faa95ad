#pragma once

#include "Core/Knowledge/CatalogEntry.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet {

/// The catalog could not be loaded.
class CatalogError : public std::runtime_error {
public:
    enum class Kind { notFound, unreadable, undecodable };

    CatalogError(Kind kind, const std::string& message)
        : std::runtime_error{message},
          kind_{kind} {}

    Kind kind() const { return kind_; }

private:
    Kind kind_;
};

/// What a user reads where the catalog could not be loaded.
inline constexpr std::string_view catalogMissing =
    "Pacelet couldn't load its process list. Reinstall Pacelet.";

/// The catalog as it stands in a file: a JSON array of entries.
namespace CatalogFile {

/// All entries in file order. One bad entry makes the whole file fail: throws `CatalogError` of the
/// kind `undecodable`. Unknown keys are ignored, and null counts as absent.
std::vector<CatalogEntry> decode(std::string_view json);

/// Reads and decodes the file. Throws `CatalogError`.
std::vector<CatalogEntry> read(const std::filesystem::path& file);

} // namespace CatalogFile

} // namespace pacelet
