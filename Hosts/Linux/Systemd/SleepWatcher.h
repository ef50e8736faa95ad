#pragma once

#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/Systemd/Bus.h"
#include "Hosts/Linux/Systemd/PostToUI.h"

#include <functional>
#include <memory>
#include <thread>

namespace pacelet::Linux {

/// Listens for the login manager's word that the machine goes to sleep or woke, on a thread of its
/// own, and has it wait for `willSleep` to be done, for as long as it grants. Without a bus, or
/// without a thread, nothing comes. Made and destroyed on the UI thread; once it is destroyed,
/// nothing is called any more.
class SleepWatcher {
public:
    SleepWatcher(PostToUI postToUI, std::function<void()> willSleep, std::function<void()> didWake);
    SleepWatcher(const SleepWatcher&) = delete;
    SleepWatcher& operator=(const SleepWatcher&) = delete;
    ~SleepWatcher();

private:
    struct Observer {
        std::function<void()> willSleep;
        std::function<void()> didWake;
    };

    void listen();
    bool waitForMore(sd_bus* bus) const;
    void tell(bool isGoing);
    static int onSignal(sd_bus_message* message, void* watcher, sd_bus_error* error);

    PostToUI postToUI_;
    std::shared_ptr<Observer> observer_;
    std::weak_ptr<Observer> posted_; // what the thread may hand over
    Descriptor stop_;
    Descriptor delay_;       // keeps the machine awake while it is open; of the thread
    bool needsDelay_ = true; // of the thread
    std::thread thread_;
};

} // namespace pacelet::Linux
