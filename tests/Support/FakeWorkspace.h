#pragma once

#include "Core/Platform/Workspace.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace pacelet::testing {

/// An application that ends when its test says so.
class FakeApplication final : public RunningApplication {
public:
    std::optional<std::string> bundle;
    std::optional<std::string> identifier;
    std::optional<std::string> executable;
    ActivationPolicy policy = ActivationPolicy::regular;
    bool terminated = false;
    int terminateCalls = 0;
    int forceTerminateCalls = 0;

    std::optional<std::string> bundlePath() const override { return bundle; }
    std::optional<std::string> bundleIdentifier() const override { return identifier; }
    std::optional<std::string> executablePath() const override { return executable; }
    ActivationPolicy activationPolicy() const override { return policy; }
    bool isTerminated() const override { return terminated; }
    bool terminate() override { return ++terminateCalls > 0; }
    bool forceTerminate() override { return ++forceTerminateCalls > 0; }
};

/// A desktop of lists and maps, which keeps what was opened.
class FakeWorkspace final : public Workspace {
public:
    std::vector<std::shared_ptr<FakeApplication>> applications;
    std::map<std::string, std::string> installed; ///< bundle identifier to path
    std::vector<std::string> openedURLs;
    std::vector<std::string> openedApplications;
    std::function<void()> willSleep; ///< of the last observer
    std::function<void()> didWake;

    /// Adds a running copy of the bundle, with its main executable in the usual place.
    FakeApplication& launch(const std::string& bundle, const std::string& name) {
        const auto& application = applications.emplace_back(std::make_shared<FakeApplication>());
        application->bundle = bundle;
        application->executable = bundle + "/Contents/MacOS/" + name;
        return *application;
    }

    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override {
        return {applications.begin(), applications.end()};
    }
    bool isRunning(const std::string& bundleIdentifier) override {
        return std::ranges::any_of(applications, [&](const auto& application) {
            return application->identifier == bundleIdentifier;
        });
    }
    bool openURL(const std::string& url) override {
        openedURLs.push_back(url);
        return true;
    }
    std::optional<std::string> applicationPath(const std::string& bundleIdentifier) override {
        const auto found = installed.find(bundleIdentifier);
        return found == installed.end() ? std::nullopt : std::optional{found->second};
    }
    void openApplication(const std::string& path) override { openedApplications.push_back(path); }
    std::optional<EncodedImage> icon(const std::string&, int) override { return std::nullopt; }
    ObserverHandle observeSleep(std::function<void()> sleep, std::function<void()> wake) override {
        willSleep = std::move(sleep);
        didWake = std::move(wake);
        return std::make_shared<int>();
    }
};

} // namespace pacelet::testing
