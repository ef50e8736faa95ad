#include "Core/Inspectors/PropertyList.h"

#include "Core/Inspectors/PropertyListLimits.h"
#include "Core/Support/Text.h"

#include <cstdint>
#include <cstdlib>
#include <plist/plist.h>

namespace pacelet {

namespace {

std::optional<std::string> textOf(plist_t node) {
    if (!PLIST_IS_STRING(node)) {
        return std::nullopt;
    }
    std::uint64_t length = 0;
    const char* const bytes = plist_get_string_ptr(node, &length);
    return bytes ? repairedUTF8({bytes, length}) : std::string{};
}

bool holdsStringsOnly(plist_t array) {
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(array, &iterator);
    const std::unique_ptr<void, decltype(&std::free)> release{iterator, std::free};
    plist_t item = nullptr;
    plist_array_next_item(array, iterator, &item);
    while (PLIST_IS_STRING(item)) {
        plist_array_next_item(array, iterator, &item);
    }
    return item == nullptr;
}

} // namespace

void PropertyList::Release::operator()(void* node) const {
    plist_free(node);
}

std::optional<PropertyList> PropertyList::parse(std::string_view bytes) {
    // The decoder compares up to a few bytes beyond the end, so these must be there; and it knows
    // neither byte order marks nor UTF-16.
    const std::string decoded = decodedText(std::string{bytes});
    if (!PropertyListLimits::allow(decoded)) {
        return std::nullopt;
    }
    plist_t top = nullptr;
    plist_from_memory(decoded.data(), static_cast<std::uint32_t>(decoded.size()), &top);
    PropertyList list{top};
    return PLIST_IS_DICT(top) ? std::optional{std::move(list)} : std::nullopt;
}

std::optional<std::string> PropertyList::string(const char* key) const {
    return textOf(plist_dict_get_item(top_.get(), key));
}

std::optional<bool> PropertyList::boolean(const char* key) const {
    plist_t node = plist_dict_get_item(top_.get(), key);
    if (!PLIST_IS_BOOLEAN(node)) {
        return std::nullopt;
    }
    std::uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value != 0;
}

bool PropertyList::isDictionary(const char* key) const {
    return PLIST_IS_DICT(plist_dict_get_item(top_.get(), key));
}

std::optional<std::string> PropertyList::firstString(const char* key) const {
    plist_t array = plist_dict_get_item(top_.get(), key);
    if (!PLIST_IS_ARRAY(array) || !holdsStringsOnly(array)) {
        return std::nullopt;
    }
    return textOf(plist_array_get_item(array, 0));
}

} // namespace pacelet
