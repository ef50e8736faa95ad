#pragma once

#include "Core/Platform/Workspace.h"
#include "Hosts/Simulated/Machine.h"

#include <list>

namespace pacelet::Simulated {

class MacWorkspace : public Workspace {
public:
    explicit MacWorkspace(Machine& machine)
        : machine_{machine} {}

    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override;
    bool isRunning(const std::string& bundleIdentifier) override;
    bool openURL(const std::string& url) override;
    std::optional<std::string> applicationPath(const std::string& bundleIdentifier) override;
    void openApplication(const std::string& path) override;
    std::optional<EncodedImage> icon(const std::string& path, int size) override;
    ObserverHandle observeSleep(std::function<void()> willSleep,
                                std::function<void()> didWake) override;

    /// The machine goes to sleep; tells the observers before. Processes stand still until `wake`.
    void sleep();

    /// The machine wakes up; tells the observers after.
    void wake();

    /// Who observes sleep right now.
    std::size_t observerCount() const;

private:
    struct Observer {
        std::function<void()> willSleep;
        std::function<void()> didWake;
    };

    std::vector<std::shared_ptr<Observer>> liveObservers();

    Machine& machine_;
    std::vector<std::weak_ptr<Observer>> observers_;
};

} // namespace pacelet::Simulated
