#include "Core/Browser/URLComponents.h"

#include <memory>
#include <uriparser/Uri.h>

namespace pacelet {

namespace {

/// The part of the text that `range` marks. The parser marks an empty piece anywhere at all, so its
/// place is not looked at.
std::string_view piece(const UriTextRangeA& range) {
    return {range.first, static_cast<std::size_t>(range.afterLast - range.first)};
}

/// The parser leaves the brackets of an IP literal out.
std::string_view withBrackets(std::string_view host) {
    return {host.data() - 1, host.size() + 2};
}

} // namespace

std::optional<URLComponents> parseURL(std::string_view text) {
    if (text.empty()) {
        return URLComponents{};
    }
    UriUriA uri{};
    const char* errorAt = nullptr;
    if (uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), &errorAt) !=
        URI_SUCCESS) {
        return std::nullopt;
    }
    const std::unique_ptr<UriUriA, decltype(&uriFreeUriMembersA)> members{&uri,
                                                                          &uriFreeUriMembersA};
    const bool isLiteral = uri.hostData.ip6 != nullptr || uri.hostData.ipFuture.first != nullptr;
    const std::string_view host = piece(uri.hostText);
    return URLComponents{piece(uri.scheme), isLiteral ? withBrackets(host) : host};
}

} // namespace pacelet
