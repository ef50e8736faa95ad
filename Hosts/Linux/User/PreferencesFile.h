#pragma once

#include "Core/Platform/Preferences.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace pacelet::Linux {

/// Bytes, to tell them from a text.
struct PreferenceData {
    std::string bytes;

    bool operator==(const PreferenceData&) const = default;
};

using PreferenceValues = std::map<std::string, std::variant<bool, PreferenceData>, std::less<>>;

/// The values in a file's text; those of another type are left out, and a text that is no JSON
/// object holds none.
PreferenceValues parsePreferences(std::string_view json);

/// One JSON object, its keys sorted: booleans as they are, data as a text in base64.
std::string writePreferences(const PreferenceValues& values);

/// The preferences in a file of the user's. It is read once, and written anew with each change, in
/// one step. A file that cannot be read counts as empty; a change that cannot be written holds for
/// this run of the program.
class PreferencesFile final : public Preferences {
public:
    explicit PreferencesFile(std::string path);

    std::optional<bool> boolean(std::string_view key) override;
    void setBoolean(std::string_view key, bool value) override;
    std::optional<std::string> data(std::string_view key) override;
    void setData(std::string_view key, std::string_view bytes) override;

private:
    void set(std::string_view key, PreferenceValues::mapped_type value);

    std::string path_;
    PreferenceValues values_;
};

} // namespace pacelet::Linux
