#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

/// The user's preferences. A key that is absent, or holds another type, reads as nothing. Belongs
/// to the UI thread.
class Preferences {
public:
    virtual ~Preferences() = default;

    virtual std::optional<bool> boolean(std::string_view key) = 0;
    virtual void setBoolean(std::string_view key, bool value) = 0;

    /// Bytes, held in a text.
    virtual std::optional<std::string> data(std::string_view key) = 0;
    virtual void setData(std::string_view key, std::string_view bytes) = 0;
};

} // namespace pacelet
