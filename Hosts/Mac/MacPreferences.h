#pragma once

#include "Core/Platform/Preferences.h"

namespace pacelet::Mac {

/// The user defaults of the application's domain. The system stores them by itself, and tells of no
/// trouble with it.
class MacPreferences final : public Preferences {
public:
    std::optional<bool> boolean(std::string_view key) override;
    void setBoolean(std::string_view key, bool value) override;
    std::optional<std::string> data(std::string_view key) override;
    void setData(std::string_view key, std::string_view bytes) override;
    PreferencesTrouble trouble() override { return PreferencesTrouble::none; }
    ObserverHandle observeTrouble(std::function<void()>) override { return nullptr; }
    void synchronize() override;
};

} // namespace pacelet::Mac
