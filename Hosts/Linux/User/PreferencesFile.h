#pragma once

#include "Core/Platform/Log.h"
#include "Core/Platform/Preferences.h"
#include "Hosts/Linux/Systemd/PostToUI.h"
#include "Hosts/Linux/User/LatestWriter.h"

#include <atomic>
#include <functional>
#include <map>
#include <memory>
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

/// What a file's text holds.
struct ParsedPreferences {
    PreferenceValues values;
    bool isWhole = false; ///< the text is an object, and nothing in it was left out

    bool operator==(const ParsedPreferences&) const = default;
};

/// Leaves values of another type out. A byte order mark is no flaw.
ParsedPreferences parsePreferences(std::string_view json);

/// One JSON object, its keys sorted: booleans as they are, data as a text in base64.
std::string writePreferences(const PreferenceValues& values);

/// The preferences in a file of the user's. It is read once, and after each change written anew in
/// one step, on another thread. A file that could not be read whole is set aside before that. A
/// change that cannot be written holds for this run of the program.
class PreferencesFile final : public Preferences {
public:
    /// `log` outlives this. Without `postToUI`, nobody is told of trouble that comes up later.
    PreferencesFile(std::string path, Log& log, PostToUI postToUI = {});

    std::optional<bool> boolean(std::string_view key) override;
    void setBoolean(std::string_view key, bool value) override;
    std::optional<std::string> data(std::string_view key) override;
    void setData(std::string_view key, std::string_view bytes) override;
    PreferencesTrouble trouble() override { return trouble_; }
    ObserverHandle observeTrouble(std::function<void()> changed) override;
    void synchronize() override { writer_.wait(); }

private:
    struct Observers;

    void read();
    void set(std::string_view key, PreferenceValues::mapped_type value);
    std::error_code store(const std::string& contents);
    void stored(const std::error_code& error);
    void complain(std::string_view what, const std::error_code& error);

    std::string path_;
    Log& log_;
    PostToUI postToUI_;
    PreferenceValues values_;
    std::atomic<PreferencesTrouble> trouble_{PreferencesTrouble::none};
    bool mustSetAside_ = false; // of the thread that writes
    std::shared_ptr<Observers> observers_;
    LatestWriter writer_; // the last member: it ends before what it uses
};

} // namespace pacelet::Linux
