#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Support/Text.h"

namespace pacelet::BackgroundItemsReader {

namespace {

constexpr std::string_view appSuffix = ".app";

/// The path of the outermost application bundle that `program` lies in, or is.
std::optional<std::string_view> enclosingBundle(std::string_view program) {
    const std::size_t inside = program.find(".app/");
    if (inside != std::string_view::npos) {
        return program.substr(0, inside + appSuffix.size());
    }
    return program.ends_with(appSuffix) ? std::optional{program} : std::nullopt;
}

/// How many of `parts` a name of parts joined by dots begins with, whole ones in their order.
std::size_t sharedParts(const std::vector<std::string_view>& parts, std::string_view name) {
    std::size_t shared = 0;
    for (const std::string_view part : parts) {
        while (name.starts_with('.')) {
            name.remove_prefix(1);
        }
        if (!name.starts_with(part)) {
            break;
        }
        name.remove_prefix(part.size());
        if (!name.empty() && name.front() != '.') {
            break;
        }
        ++shared;
    }
    return shared;
}

std::optional<std::string> ownerByLabel(std::string_view label, const InstalledApps& installed) {
    // Two parts are a vendor's prefix, such as com.vendor; less says nothing.
    std::size_t most = 1;
    const std::string* owner = nullptr;
    const auto parts = splitDroppingEmpty(label, '.');
    for (const auto& [identifier, name] : installed) {
        if (const std::size_t shared = sharedParts(parts, identifier); shared > most) {
            most = shared;
            owner = &name;
        }
    }
    return owner != nullptr ? std::optional{*owner} : std::nullopt;
}

} // namespace

std::optional<std::string> ownerApp(const std::optional<std::string>& program,
                                    std::string_view label, const InstalledApps& installed) {
    std::optional<std::string> fallback;
    if (const auto bundle = program ? enclosingBundle(*program) : std::nullopt) {
        fallback = std::string{withoutExtension(lastPathComponent(*bundle))};
        if (bundle->starts_with("/Applications/") ||
            bundle->find("/Users/") != std::string_view::npos) {
            return fallback;
        }
    }
    auto owner = ownerByLabel(label, installed);
    return owner ? owner : fallback;
}

} // namespace pacelet::BackgroundItemsReader
