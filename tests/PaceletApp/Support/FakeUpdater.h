#pragma once

#include "PaceletApp/AppUpdater/AppUpdater.h"

#include <functional>
#include <utility>

namespace pacelet::testing {

/// What an updater was asked to do.
struct UpdaterRecord {
    int starts = 0;
    int checks = 0;
    bool can = false;
    bool automatic = false;
    std::function<void()> changed;
};

class FakeUpdater final : public UpdaterController {
public:
    explicit FakeUpdater(UpdaterRecord& record)
        : record_{record} {}

    void startUpdater() override { ++record_.starts; }
    void checkForUpdates() override { ++record_.checks; }
    bool canCheckForUpdates() override { return record_.can; }
    bool automaticallyChecksForUpdates() override { return record_.automatic; }
    void setAutomaticallyChecksForUpdates(bool on) override { record_.automatic = on; }
    void observe(std::function<void()> changed) override { record_.changed = std::move(changed); }

private:
    UpdaterRecord& record_;
};

} // namespace pacelet::testing
