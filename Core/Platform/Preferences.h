#pragma once

#include "Core/Platform/Workspace.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

/// What keeps the preferences from being those that the user has chosen.
enum class PreferencesTrouble {
    none,
    flawed,     ///< what was stored could not be read whole; an absent key tells nothing
    unwritable, ///< changes hold for this run of the program only
};

/// The user's preferences. A key that is absent, or holds another type, reads as nothing. Belongs
/// to the UI thread, and never waits on it but in `synchronize`.
class Preferences {
public:
    virtual ~Preferences() = default;

    virtual std::optional<bool> boolean(std::string_view key) = 0;
    virtual void setBoolean(std::string_view key, bool value) = 0;

    /// Bytes, held in a text.
    virtual std::optional<std::string> data(std::string_view key) = 0;
    virtual void setData(std::string_view key, std::string_view bytes) = 0;

    virtual PreferencesTrouble trouble() = 0;

    /// Calls `changed`, on the UI thread, when there is another trouble, for as long as the handle
    /// lives.
    virtual ObserverHandle observeTrouble(std::function<void()> changed) = 0;

    /// Waits until all that was set is stored, as far as it can be.
    virtual void synchronize() = 0;
};

} // namespace pacelet
