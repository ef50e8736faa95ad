// truth CONFIGURATION CERTIFICATES [MBPS...]: run by scripts/truth.sh, which makes the line and the
// server.

#include "benchmarks/truth/SpeedTruth.h"
#include "benchmarks/truth/TrafficTruth.h"

#include <exception>
#include <fmt/format.h>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    if (argc < 3) {
        fmt::print(stderr, "Usage: truth CONFIGURATION CERTIFICATES [MBPS...]\n");
        return 2;
    }
    try {
        pacelet::Linux::LinuxSettings settings;
        settings.speedServer = {argv[1], argv[2]};
        pacelet::Linux::LinuxHost host{settings};
        std::vector<double> rates;
        for (const char* const* rate = argv + 3; rate != argv + argc; ++rate) {
            rates.push_back(std::stod(*rate));
        }
        if (rates.empty()) {
            rates = {8, 50, 300};
        }
        const bool traffic = pacelet::truth::trafficIsTrue(host);
        const bool speed = pacelet::truth::speedIsTrue(host, rates);
        return traffic && speed ? 0 : 1;
    } catch (const std::exception& error) {
        fmt::print(stderr, "truth: {}\n", error.what());
        return 1;
    }
}
