#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

/// A property list whose top is a dictionary, XML or binary. A key of another type than the one
/// that is asked for reads as nothing, as an absent one does.
class PropertyList {
public:
    /// Nothing when `bytes` are no property list, have another top, or go beyond
    /// `PropertyListLimits`.
    static std::optional<PropertyList> parse(std::string_view bytes);

    /// Repaired to UTF-8 where need be.
    std::optional<std::string> string(const char* key) const;
    std::optional<bool> boolean(const char* key) const;
    bool isDictionary(const char* key) const;

    /// The first element of a non-empty array that holds nothing but strings.
    std::optional<std::string> firstString(const char* key) const;

private:
    struct Release {
        void operator()(void* node) const;
    };

    explicit PropertyList(void* top)
        : top_{top} {}

    std::unique_ptr<void, Release> top_; ///< the decoder's dictionary
};

} // namespace pacelet
