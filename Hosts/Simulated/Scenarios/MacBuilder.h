#pragma once

#include "Hosts/Simulated/Model/Random.h"
#include "Hosts/Simulated/Model/World.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace pacelet::Simulated {

/// An application as a scenario puts it on the machine.
struct AppPlan {
    std::string name;
    std::string bundleIdentifier;
    double cpuPercent = 0;
    double megabytes = 100;
    int windows = 1;
    std::string folder = "/Applications/";
    ActivationPolicy policy = ActivationPolicy::regular;
};

/// Further processes of an application, deeper in its bundle.
struct HelperPlan {
    std::string name;
    double cpuPercent = 0; ///< of each
    double megabytes = 40; ///< of each
    int count = 1;
    std::string arguments;
    std::string folder = "Contents/Frameworks/"; ///< below the bundle
};

/// Puts a machine together, piece by piece. What a scenario leaves open is drawn from the seed.
class MacBuilder {
public:
    explicit MacBuilder(std::uint64_t seed);

    /// A Mac that was started `uptime` ago, with everything that runs on every Mac.
    void boot(const Hardware& hardware, Seconds uptime);

    /// The applications of an ordinary desk, and what else is installed on it.
    void usualApplications();

    /// Puts an application on the disk only.
    void install(const AppPlan& plan);

    /// Puts it on the disk and starts it.
    RunningApp& run(const AppPlan& plan);

    /// Adds helpers to an application that runs. Answers the pid of the first.
    std::int32_t help(const RunningApp& app, const HelperPlan& plan);

    /// Adds a process of its own.
    Process& process(User user, std::string path, double cpuPercent, double megabytes);

    /// All processes of this name get the load, each its share of it.
    void work(std::string_view name, const Load& load);

    /// The process of this name moves this much data a second.
    void transfer(std::string_view name, std::int64_t in, std::int64_t out);

    void startsByItself(LaunchItem item);

    Random& random() { return random_; }
    World& world() { return world_; }
    World finish() { return std::move(world_); }

private:
    void startBackground();
    void startIndexWorkers();
    void listAgents();
    Process& add(Process process, double cpuPercent, double megabytes);

    World world_;
    Random random_;
};

} // namespace pacelet::Simulated
