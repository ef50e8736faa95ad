#pragma once

namespace pacelet {

/// What a user has asked of all programs in the settings of their desktop. By default, nothing.
struct DesktopWishes {
    bool reducedMotion = false;
    bool highContrast = false;

    bool operator==(const DesktopWishes&) const = default;
};

} // namespace pacelet
