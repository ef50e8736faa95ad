#pragma once

#include "Core/Platform/Log.h"
#include "Core/Platform/LoginItems.h"
#include "Core/Platform/Preferences.h"
#include "Core/Platform/WindowServer.h"
#include "Hosts/Simulated/Machine.h"

namespace pacelet::Simulated {

class MacWindowServer : public WindowServer {
public:
    explicit MacWindowServer(Machine& machine)
        : machine_{machine} {}

    std::optional<std::vector<WindowDictionary>> windowInfo() override;
    std::optional<std::vector<std::uint32_t>> activeDisplays(std::size_t maximum) override;
    std::optional<std::int64_t> currentModeWidth(std::uint32_t display) override;
    std::optional<std::vector<std::int64_t>> modeWidths(std::uint32_t display) override;

private:
    Machine& machine_;
};

class MacLoginItems : public LoginItems {
public:
    explicit MacLoginItems(Machine& machine)
        : machine_{machine} {}

    bool registerProgram() override { return set(LoginItemStatus::enabled); }
    bool unregisterProgram() override { return set(LoginItemStatus::notRegistered); }
    LoginItemStatus status() override { return machine_.lock()->loginItem; }

private:
    bool set(LoginItemStatus status);

    Machine& machine_;
};

/// Preferences that live as long as the machine.
class MacPreferences : public Preferences {
public:
    explicit MacPreferences(Machine& machine)
        : machine_{machine} {}

    std::optional<bool> boolean(std::string_view key) override;
    void setBoolean(std::string_view key, bool value) override;
    std::optional<std::string> data(std::string_view key) override;
    void setData(std::string_view key, std::string_view bytes) override;
    PreferencesTrouble trouble() override { return PreferencesTrouble::none; }
    ObserverHandle observeTrouble(std::function<void()>) override { return nullptr; }
    void synchronize() override {}

private:
    Machine& machine_;
};

/// Keeps the messages in the machine's records, the latest thousand of them.
class MacLog : public Log {
public:
    explicit MacLog(Machine& machine)
        : machine_{machine} {}

    void write(LogLevel level, std::string_view subsystem, std::string_view category,
               std::string_view message) override;

private:
    Machine& machine_;
};

} // namespace pacelet::Simulated
