#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace pacelet {

/// A desktop's leave for a program to come forward, given to who was started by its user. Both are
/// empty where the desktop gives none.
struct Activation {
    QByteArray startupID; ///< that of X
    QByteArray token;     ///< that of Wayland

    /// What this process was started with.
    static Activation ofEnvironment();

    /// When the user asked, in the X server's milliseconds, as the startup id tells.
    std::optional<std::uint32_t> time() const;
};

} // namespace pacelet
