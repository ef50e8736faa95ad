#pragma once

#include "Core/Platform/LoginItems.h"

#include <string>
#include <string_view>

namespace pacelet::Linux {

/// The text of an entry by which a desktop starts `program`, an absolute path, at login: in its
/// tray, without a window.
std::string autostartText(std::string_view program);

/// What such an entry's text says: enabled; `requiresApproval` when the user switched it off in the
/// desktop's own settings; `notRegistered` when it starts some other program than `program`.
LoginItemStatus autostartStatus(std::string_view text, std::string_view program);

/// Start at login by an entry in the user's autostart folder.
class AutostartEntry final : public LoginItems {
public:
    /// `configFolder` is "~/.config" or what stands for it.
    AutostartEntry(const std::string& configFolder, std::string program);

    /// Switches an entry on again that the user switched off in the desktop's settings.
    bool registerProgram() override;
    bool unregisterProgram() override;
    LoginItemStatus status() override;

private:
    std::string path_;
    std::string program_;
};

} // namespace pacelet::Linux
