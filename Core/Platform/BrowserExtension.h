#pragma once

#include "Core/Platform/Workspace.h"
#include "Core/Support/EnumTable.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace pacelet {

/// How far the way to a browser has been made ready.
enum class ExtensionSetup {
    unknown,    ///< the browser does not know the program yet
    registered, ///< it does; what is missing is the extension, or it is about to answer
    provided,   ///< the system brings both, and the browser loads them when it is next started
};

struct ExtensionSetupRow {
    ExtensionSetup value;
    std::string_view rawValue;
};

inline constexpr std::array<ExtensionSetupRow, 3> extensionSetups{{
    {ExtensionSetup::unknown, "unknown"},
    {ExtensionSetup::registered, "registered"},
    {ExtensionSetup::provided, "provided"},
}};

constexpr std::string_view rawValue(ExtensionSetup setup) {
    return rowOf(extensionSetups, setup).rawValue;
}

/// The way to the user's browsers on a system that has no permission for it: an extension of ours,
/// which the user adds. Any thread may call it, but for `observe`, which belongs to the UI thread.
class BrowserExtension {
public:
    virtual ~BrowserExtension() = default;

    virtual ExtensionSetup setup(const std::string& bundleIdentifier) = 0;

    /// Makes the program known to the browser, for this user alone. False when that could not be
    /// written.
    virtual bool registerProgram(const std::string& bundleIdentifier) = 0;

    /// Where the extension stands, for the user to add it from.
    virtual std::string folder() = 0;

    /// Calls `changed` on the UI thread after a browser came or went, for as long as the handle
    /// lives.
    virtual ObserverHandle observe(std::function<void()> changed) = 0;
};

} // namespace pacelet
