#include "Core/Platform/BundlePath.h"

namespace pacelet {

std::optional<std::string_view> outermostApp(std::string_view path) {
    constexpr std::string_view extension = ".app";
    constexpr std::string_view inside = ".app/";
    if (const std::size_t at = path.find(inside); at != std::string_view::npos) {
        return path.substr(0, at + extension.size());
    }
    if (path.ends_with(extension)) {
        return path;
    }
    return std::nullopt;
}

} // namespace pacelet
