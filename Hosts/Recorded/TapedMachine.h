#pragma once

#include "Hosts/Recorded/TapedDesktop.h"
#include "Hosts/Recorded/TapedTools.h"

#include <filesystem>
#include <map>

namespace pacelet::Recorded {

/// Records any machine, while it works as before. The machine outlives it.
class Recorder {
public:
    explicit Recorder(const Platform& machine);

    /// The machine as it is kept: nothing of it may be asked before the first `look`. Preferences,
    /// the log and the start at login are the machine's own, and not kept. References into this
    /// object.
    Platform platform();

    /// Another look begins, now.
    void look();

    /// All looks so far.
    Capture capture();

private:
    Platform machine_;
    Disguise disguise_;
    Tape tape_{disguise_};
    TapedTools tools_;
    TapedKernel kernel_;
    TapedWorkspace workspace_;
    TapedNetwork network_;
    TapedWindows windows_;
    TapedKnowledge knowledge_;
    TapedItems items_;
};

/// Preferences that last as long as the replay.
class FleetingPreferences : public Preferences {
public:
    std::optional<bool> boolean(std::string_view key) override;
    void setBoolean(std::string_view key, bool value) override;
    std::optional<std::string> data(std::string_view key) override;
    void setData(std::string_view key, std::string_view bytes) override;
    PreferencesTrouble trouble() override { return PreferencesTrouble::none; }
    ObserverHandle observeTrouble(std::function<void()>) override { return nullptr; }
    void synchronize() override {}

private:
    std::map<std::string, std::variant<bool, std::string>, std::less<>> values_;
};

/// A captured machine. What was never asked is absent; nothing that would change it does; files are
/// written to a folder that goes with it.
class Replay {
public:
    /// Throws `std::system_error` when there is no folder for temporary files.
    explicit Replay(Capture capture);
    ~Replay();
    Replay(const Replay&) = delete;
    Replay& operator=(const Replay&) = delete;

    /// References into this object.
    Platform platform();

    std::size_t looks() const { return looks_; }
    /// Brings this look on show, 0 being the first. From the last one on, nothing changes.
    void show(std::size_t look) { tape_.show(look); }
    /// Looks follow each other as they did.
    void followRealTime() { tape_.followRealTime(); }

private:
    class NoLoginItems : public LoginItems {
    public:
        bool registerProgram() override { return false; }
        bool unregisterProgram() override { return false; }
        LoginItemStatus status() override { return LoginItemStatus::notFound; }
    };
    class NoLog : public Log {
    public:
        void write(LogLevel, std::string_view, std::string_view, std::string_view) override {}
    };

    std::size_t looks_;
    OperatingSystem system_;
    bool tellsPrograms_;
    bool listsBackgroundItems_;
    std::filesystem::path folder_;
    Tape tape_;
    TapedTools tools_{tape_, nullptr, nullptr};
    TapedKernel kernel_{tape_, nullptr, nullptr};
    TapedWorkspace workspace_{tape_, nullptr, nullptr};
    TapedNetwork network_{tape_, nullptr};
    TapedWindows windows_{tape_, nullptr};
    TapedKnowledge knowledge_{tape_, nullptr, nullptr};
    TapedItems items_{tape_, nullptr};
    NoLoginItems loginItems_;
    FleetingPreferences preferences_;
    NoLog log_;
};

} // namespace pacelet::Recorded
