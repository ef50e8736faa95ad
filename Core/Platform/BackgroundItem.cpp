#include "Core/Platform/BackgroundItem.h"

#include "Core/Support/EnumTable.h"

namespace pacelet {

namespace {

struct ScopeRow {
    ItemScope value;
    std::string_view rawValue;
};
constexpr std::array<ScopeRow, 4> scopes{{
    {ItemScope::userAgent, "userAgent"},
    {ItemScope::systemAgent, "systemAgent"},
    {ItemScope::systemDaemon, "systemDaemon"},
    {ItemScope::appBundled, "appBundled"},
}};

} // namespace

std::string_view rawValue(ItemScope scope) {
    return rowOf(scopes, scope).rawValue;
}

} // namespace pacelet
