#pragma once

#include "Core/Knowledge/CatalogEntry.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace pacelet {

/// Finds what the entries of a catalog claim without going through all of them: each process of the
/// machine is looked up at each look. Holds places, no text, so it goes with every copy of the
/// entries that it was made of.
class CatalogIndex {
public:
    CatalogIndex() = default;
    explicit CatalogIndex(std::span<const CatalogEntry> entries);

    /// The first entry with exactly this name; null where none has it. `entries` are those that the
    /// index was made of, here and below.
    const CatalogEntry* withName(std::span<const CatalogEntry> entries,
                                 std::string_view name) const;

    /// The first entry with a prefix of this path.
    const CatalogEntry* withPrefixOf(std::span<const CatalogEntry> entries,
                                     std::string_view path) const;

    bool operator==(const CatalogIndex&) const = default;

private:
    /// That the entry at `place` claims a text with this hash.
    struct Claim {
        std::uint64_t hash;
        std::size_t place;

        // NOLINTNEXTLINE(modernize-use-nullptr): it takes the zero of the comparison for a pointer
        auto operator<=>(const Claim&) const = default;
    };

    std::vector<Claim> names_;             ///< in order
    std::vector<Claim> prefixes_;          ///< in order
    std::vector<std::size_t> prefixSizes_; ///< in order, each once
};

} // namespace pacelet
