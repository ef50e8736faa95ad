#pragma once

#include "Core/Platform/OperatingSystem.h"

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

namespace pacelet::Recorded {

/// Takes out of a machine's answers whom it belongs to. People become "user", who captures it, and
/// "user-2", "user-3" and so on; accounts of the system keep their names. Safe from any thread.
class Disguise {
public:
    /// Of the person with this home folder and number.
    Disguise(std::string home, std::uint32_t uid, OperatingSystem system);

    /// Any text in plain UTF-8, with other names in the place of people's home folders and media. A
    /// text that was hidden stays as it is.
    std::string hide(std::string_view text);

    /// A text that was hidden, as the machine knows it.
    std::string reveal(std::string_view text);

    /// The table of `ps`, with other names in its column of users, too.
    std::string hideTable(std::string_view table);

    /// The command lines of `ps`: those of the person's own processes alone, as far as the last
    /// table told them, and of those the program and whether it says that it is an extension.
    std::string hideCommandLines(std::string_view lines);

    /// The report of `system_profiler` on the hardware, without what tells this machine from others
    /// of its kind. Empty when it is none.
    static std::string hideHardware(std::string_view report);

private:
    using Rename = std::function<std::string(std::string_view folder, std::string_view name)>;

    static std::string renamed(std::string_view text, const Rename& rename);
    std::string hideLocked(std::string_view text);
    std::string aliasOf(const std::string& name);

    std::mutex mutex_;
    std::string home_;
    std::string homeAlias_;
    std::uint32_t uid_;
    std::map<std::string, std::string> aliases_;          ///< by name
    std::map<std::string, std::string> names_;            ///< by alias
    std::map<std::string, std::string, std::less<>> own_; ///< programs of the person, by pid
};

} // namespace pacelet::Recorded
