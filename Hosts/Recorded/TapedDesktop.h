#pragma once

#include "Core/Platform/Platform.h"
#include "Hosts/Recorded/Tape.h"

namespace pacelet::Recorded {

// More services of a machine behind a tape, as in TapedTools.h.

/// Icons, and what opens something, reach the machine while it is recorded, but are not kept.
class TapedWorkspace : public Workspace {
public:
    TapedWorkspace(Tape& tape, Workspace* live, Disguise* disguise)
        : tape_{tape},
          live_{live},
          disguise_{disguise} {}

    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override;
    bool isRunning(const std::string& bundleIdentifier) override;
    bool openURL(const std::string& url) override;
    std::optional<std::string> applicationPath(const std::string& bundleIdentifier) override;
    void openApplication(const std::string& path) override;
    std::optional<EncodedImage> icon(const std::string& path, int size) override;
    ObserverHandle observeSleep(std::function<void()> willSleep,
                                std::function<void()> didWake) override;

private:
    Tape& tape_;
    Workspace* live_;
    Disguise* disguise_;
};

/// A replayed path is told once, while its monitor starts.
class TapedNetwork : public NetworkLink {
public:
    TapedNetwork(Tape& tape, NetworkLink* live)
        : tape_{tape},
          live_{live} {}

    std::unique_ptr<WiFiInterface> wifiInterface() override;
    std::shared_ptr<PathMonitor> makePathMonitor() override;
    bool isExpensive() override;

private:
    Tape& tape_;
    NetworkLink* live_;
};

/// What stands in a window's title is nobody's business, and left out.
class TapedWindows : public WindowServer {
public:
    TapedWindows(Tape& tape, WindowServer* live)
        : tape_{tape},
          live_{live} {}

    std::optional<std::vector<WindowDictionary>> windowInfo() override;
    std::optional<std::vector<std::uint32_t>> activeDisplays(std::size_t maximum) override;
    std::optional<std::int64_t> currentModeWidth(std::uint32_t display) override;
    std::optional<std::vector<std::int64_t>> modeWidths(std::uint32_t display) override;

private:
    Tape& tape_;
    WindowServer* live_;
};

class TapedKnowledge : public ProgramKnowledge {
public:
    TapedKnowledge(Tape& tape, ProgramKnowledge* live, Disguise* disguise)
        : tape_{tape},
          live_{live},
          disguise_{disguise} {}

    std::vector<std::shared_ptr<const ProgramFacts>>
    about(std::span<const ProgramQuestion> questions) override;

private:
    std::shared_ptr<const ProgramFacts> shared(const ProgramFacts& facts);

    Tape& tape_;
    ProgramKnowledge* live_;
    Disguise* disguise_;
    std::mutex mutex_;
    std::unordered_map<std::string, std::shared_ptr<const ProgramFacts>> shared_; ///< by its bytes
};

class TapedItems : public BackgroundItemSource {
public:
    TapedItems(Tape& tape, BackgroundItemSource* live)
        : tape_{tape},
          live_{live} {}

    std::vector<BackgroundItem> items() override;

private:
    Tape& tape_;
    BackgroundItemSource* live_;
};

} // namespace pacelet::Recorded
