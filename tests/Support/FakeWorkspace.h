#pragma once

#include "Core/Platform/Workspace.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace pacelet::testing {

/// An application that ends when its test says so.
class FakeApplication final : public RunningApplication {
public:
    std::optional<std::string> bundle;
    std::optional<std::string> executable;
    ActivationPolicy policy = ActivationPolicy::regular;
    bool terminated = false;
    bool canAnswer = true;
    int terminateCalls = 0;
    int forceTerminateCalls = 0;

    std::optional<std::string> bundlePath() const override { return bundle; }
    std::optional<std::string> bundleIdentifier() const override { return {}; }
    std::optional<std::string> executablePath() const override { return executable; }
    ActivationPolicy activationPolicy() const override { return policy; }
    bool isTerminated() const override { return terminated; }
    bool canBeAsked() const override { return canAnswer; }
    bool terminate() override { return ++terminateCalls > 0; }
    bool forceTerminate() override { return ++forceTerminateCalls > 0; }
};

/// A desktop of applications that a test launches, on which no address opens.
class FakeWorkspace : public Workspace {
public:
    std::vector<std::shared_ptr<FakeApplication>> applications;
    bool restartAsks = true;
    std::set<std::string> installed; ///< identifiers
    std::string opened;              ///< the last address or path

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
    bool isRunning(const std::string&) override { return false; }
    bool asksBeforeRestart() override { return restartAsks; }
    bool openURL(const std::string& url) override { return (opened = url).empty(); }
    std::optional<std::string> applicationPath(const std::string& identifier) override {
        return installed.contains(identifier) ? std::optional{"/" + identifier} : std::nullopt;
    }
    void openApplication(const std::string& path) override { opened = path; }
    std::optional<EncodedImage> icon(const std::string&, int) override { return {}; }
    ObserverHandle observeSleep(std::function<void()>, std::function<void()>) override {
        return {};
    }
};

} // namespace pacelet::testing
