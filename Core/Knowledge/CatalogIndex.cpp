#include "Core/Knowledge/CatalogIndex.h"

#include <algorithm>

namespace pacelet {

namespace {

/// FNV-1a, one character after the other: on the way through a path all of its beginnings have
/// their hashes, too.
class Hash {
public:
    void add(std::string_view text) {
        for (const char character : text) {
            value_ = (value_ ^ static_cast<unsigned char>(character)) * 0x100000001b3;
        }
    }

    static std::uint64_t of(std::string_view text) {
        Hash hash;
        hash.add(text);
        return hash.value_;
    }

    std::uint64_t value() const { return value_; }

private:
    std::uint64_t value_ = 0xcbf29ce484222325;
};

/// The first entry of which a claim with this hash is meant, and not only seems to be.
template<typename Claims, typename IsMeant>
const CatalogEntry* firstOf(const Claims& claims, std::span<const CatalogEntry> entries,
                            std::uint64_t hash, IsMeant&& isMeant) {
    for (auto claim = std::ranges::lower_bound(claims, hash, {}, [](auto& c) { return c.hash; });
         claim != claims.end() && claim->hash == hash; ++claim) {
        if (isMeant(entries[claim->place].match)) {
            return &entries[claim->place];
        }
    }
    return nullptr;
}

} // namespace

CatalogIndex::CatalogIndex(std::span<const CatalogEntry> entries) {
    for (std::size_t place = 0; place < entries.size(); ++place) {
        for (const std::string& name : entries[place].match.names) {
            names_.push_back({Hash::of(name), place});
        }
        for (const std::string& prefix : entries[place].match.pathPrefixes) {
            prefixes_.push_back({Hash::of(prefix), place});
            prefixSizes_.push_back(prefix.size());
        }
    }
    std::ranges::sort(names_);
    std::ranges::sort(prefixes_);
    std::ranges::sort(prefixSizes_);
    prefixSizes_.erase(std::unique(prefixSizes_.begin(), prefixSizes_.end()), prefixSizes_.end());
}

const CatalogEntry* CatalogIndex::withName(std::span<const CatalogEntry> entries,
                                           std::string_view name) const {
    return firstOf(names_, entries, Hash::of(name), [&](const CatalogEntry::Match& match) {
        return std::ranges::find(match.names, name) != match.names.end();
    });
}

const CatalogEntry* CatalogIndex::withPrefixOf(std::span<const CatalogEntry> entries,
                                               std::string_view path) const {
    const CatalogEntry* first = nullptr;
    Hash hash;
    std::size_t hashed = 0;
    for (const std::size_t size : prefixSizes_) {
        if (size > path.size()) {
            break;
        }
        hash.add(path.substr(hashed, size - hashed));
        hashed = size;
        const CatalogEntry* const found =
            firstOf(prefixes_, entries, hash.value(), [&](const CatalogEntry::Match& match) {
                return std::ranges::find(match.pathPrefixes, path.substr(0, size)) !=
                       match.pathPrefixes.end();
            });
        if (found != nullptr && (first == nullptr || found < first)) {
            first = found;
        }
    }
    return first;
}

} // namespace pacelet
