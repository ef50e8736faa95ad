#include "Hosts/Simulated/Services/AppIcon.h"

#include "Hosts/Simulated/Model/Random.h"

#include <array>
#include <fmt/format.h>
#include <span>

namespace pacelet::Simulated::AppIcon {

namespace {

struct Shades {
    std::string_view light;
    std::string_view dark;
};

constexpr std::array<Shades, 8> palette{{
    {"#5aa9f8", "#1f6fd6"},
    {"#63d2a1", "#1f9c6b"},
    {"#f7a35c", "#d9702b"},
    {"#b48cf2", "#7a4fd0"},
    {"#f2799b", "#cf3f68"},
    {"#5fd0d8", "#1e98a6"},
    {"#f2c94c", "#cf9a16"},
    {"#9aa5b5", "#5f6b7d"},
}};

/// The first character of the name as XML text, in upper case.
std::string initial(std::string_view name) {
    const char first = name.front();
    if (first >= 'a' && first <= 'z') {
        return std::string(1, static_cast<char>(first - 'a' + 'A'));
    }
    const bool plain = (first >= 'A' && first <= 'Z') || (first >= '0' && first <= '9');
    return plain ? std::string(1, first) : "•";
}

} // namespace

EncodedImage tile(std::string_view name, int size) {
    const Shades& shades = palette.at(stableHash(name) % palette.size());
    const std::string svg = fmt::format(
        R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="{0}" height="{0}" viewBox="0 0 64 64">)svg"
        R"svg(<defs><linearGradient id="g" x1="0" y1="0" x2="0" y2="1">)svg"
        R"svg(<stop offset="0" stop-color="{1}"/><stop offset="1" stop-color="{2}"/>)svg"
        R"svg(</linearGradient></defs>)svg"
        R"svg(<rect x="4" y="4" width="56" height="56" rx="13" fill="url(#g)"/>)svg"
        R"svg(<text x="32" y="43" font-family="Inter, sans-serif" font-size="32" )svg"
        R"svg(font-weight="600" text-anchor="middle" fill="#ffffff">{3}</text></svg>)svg",
        size, shades.light, shades.dark, initial(name));
    const auto bytes = std::as_bytes(std::span{svg});
    return {{bytes.begin(), bytes.end()}};
}

} // namespace pacelet::Simulated::AppIcon
