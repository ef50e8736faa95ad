#pragma once

#include "Core/Support/Time.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace pacelet::Simulated {

// What can go wrong, one struct each. Where a `tool` is named by its path, an empty one means every
// tool. A failure lasts until it is cleared.

struct ToolMissing {
    std::string tool;
};
struct ToolNotPermitted {
    std::string tool;
};
/// Ends with this status, having printed nothing on standard output.
struct ToolFails {
    std::string tool;
    std::int32_t status = 1;
    std::string stderr;
};
/// Prints these bytes in place of its answer: rubbish, nothing, or what is no UTF-8.
struct ToolPrints {
    std::string tool;
    std::string bytes;
};
/// Comes back only when the failure is cleared; the call then goes on as usual.
struct ToolHangs {
    std::string tool;
};
/// Takes this long in virtual time.
struct ToolTakes {
    std::string tool;
    Seconds duration{0};
};
/// The user has denied the control of this application: -1743.
struct AutomationRefused {
    std::string bundleIdentifier;
};
/// The user answers every prompt with "Cancel": -128.
struct PromptCancelled {};
/// Every script ends with this error of the application.
struct ScriptFails {
    std::int32_t number = 0;
    std::string message;
};
/// The real folder at this path cannot be reached: a file stands in its place meanwhile.
struct FolderUnwritable {
    std::string path;
};
struct SysctlFails {
    std::string name; ///< every one when empty
};
struct StatisticsFail {};
struct FootprintFails {};
struct VolumeUnreadable {};
struct LoginItemsRefuse {};
struct NothingOpens {}; ///< no handler for any URL
struct WindowsUnknown {};
struct DisplaysUnknown {};

using Failure =
    std::variant<ToolMissing, ToolNotPermitted, ToolFails, ToolPrints, ToolHangs, ToolTakes,
                 AutomationRefused, PromptCancelled, ScriptFails, FolderUnwritable, SysctlFails,
                 StatisticsFail, FootprintFails, VolumeUnreadable, LoginItemsRefuse, NothingOpens,
                 WindowsUnknown, DisplaysUnknown>;

/// The failures in force.
class Failures {
public:
    void add(Failure failure) { all_.push_back(std::move(failure)); }
    void clear() { all_.clear(); }

    template<typename Kind>
    bool has() const {
        return find<Kind>([](const Kind&) { return true; }) != nullptr;
    }

    /// The one of this kind that was added last and for which `matches` holds, or null.
    template<typename Kind, typename Matches>
    const Kind* find(Matches&& matches) const {
        // NOLINTNEXTLINE(modernize-loop-convert): one of our compilers has no reversed views
        for (auto failure = all_.rbegin(); failure != all_.rend(); ++failure) {
            const Kind* const candidate = std::get_if<Kind>(&*failure);
            if (candidate != nullptr && matches(*candidate)) {
                return candidate;
            }
        }
        return nullptr;
    }

    template<typename Kind>
    const Kind* ofTool(std::string_view tool) const {
        return find<Kind>(
            [tool](const Kind& failure) { return failure.tool.empty() || failure.tool == tool; });
    }

private:
    std::vector<Failure> all_;
};

} // namespace pacelet::Simulated
