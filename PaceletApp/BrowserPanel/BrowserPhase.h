#pragma once

#include "Core/Browser/BrowserError.h"
#include "Core/Platform/BrowserExtension.h"
#include "Core/Support/EnumTable.h"

#include <array>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

/// What the tab cleaner shows.
struct BrowserPhase {
    enum class Kind {
        primer,       ///< what will happen, before the browser is first touched
        loading,      ///< the listing is being read
        loaded,       ///< windows and tabs
        notPermitted, ///< the system refused access
        notRunning,   ///< the browser is not running
        failed,       ///< any other error; `text` describes it
    };

    Kind kind = Kind::loading;
    std::string text; ///< empty but for `failed`
    /// How far the way there is made; only for `notPermitted`, where browsers need our extension.
    std::optional<ExtensionSetup> setup{};

    bool isFailure() const { return kind >= Kind::notPermitted; }

    bool operator==(const BrowserPhase&) const = default;
};

struct BrowserPhaseRow {
    BrowserPhase::Kind value;
    std::string_view rawValue;
};

inline constexpr std::array<BrowserPhaseRow, 6> browserPhases{{
    {BrowserPhase::Kind::primer, "primer"},
    {BrowserPhase::Kind::loading, "loading"},
    {BrowserPhase::Kind::loaded, "loaded"},
    {BrowserPhase::Kind::notPermitted, "notPermitted"},
    {BrowserPhase::Kind::notRunning, "notRunning"},
    {BrowserPhase::Kind::failed, "failed"},
}};

constexpr std::string_view rawValue(BrowserPhase::Kind kind) {
    return rowOf(browserPhases, kind).rawValue;
}

/// The phase that an error of the browser, or any other, leads to.
BrowserPhase phaseAfter(const std::exception& error);

} // namespace pacelet
