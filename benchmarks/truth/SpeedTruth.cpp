#include "benchmarks/truth/SpeedTruth.h"

#include "Core/Internet/SpeedTest.h"
#include "benchmarks/truth/Line.h"

#include <cmath>
#include <cstdio>
#include <fmt/format.h>
#include <fstream>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace pacelet::truth {

namespace {

constexpr double rateTolerance = 0.10;
constexpr double roundTripTolerance = 0.15;
constexpr double leastBloat = 3;
constexpr double mostOfACore = 0.60;
constexpr double megabyte = 1e6;
/// What a heap may gain by chance from the third test on, when all that is made once is made.
constexpr double mostGrowth = 2 * megabyte;

/// What one test said, and what it took.
struct Run {
    SpeedResult result;
    double seconds = 0;
    double shareOfACore = 0;
};

double processorSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double residentBytes() {
    std::ifstream file{"/proc/self/statm"};
    double whole = 0;
    double resident = 0;
    file >> whole >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

Run testOn(const LineShape& shape, Linux::LinuxHost& host) {
    const Line line{shape};
    const MonotonicTime begin = host.clock().monotonicNow();
    const double before = processorSeconds();
    Run run{SpeedTest::run(host.tools(), host.clock())};
    run.seconds = (host.clock().monotonicNow() - begin).count();
    run.shareOfACore = (processorSeconds() - before) / run.seconds;
    return run;
}

bool isWithin(double value, double truth, double tolerance) {
    return std::abs(value - truth) <= truth * tolerance;
}

bool isTrue(const Run& run, const LineShape& shape) {
    return isWithin(run.result.downloadMbps, shape.downMbps, rateTolerance) &&
           isWithin(run.result.uploadMbps, shape.upMbps(), rateTolerance) &&
           isWithin(run.result.baseRTTms.value_or(0), shape.roundTripMs, roundTripTolerance) &&
           run.shareOfACore < mostOfACore;
}

double perMinute(const Run& run) {
    return static_cast<double>(run.result.responsivenessRPM.value_or(0));
}

void print(const Run& run, const LineShape& shape, bool good) {
    fmt::print("| {:.0f} | {:.1f} | {:.2f} | {:.2f} | {} ms | {:.1f} ms | {} | {} | {:.1f} s | "
               "{:.0f}% |{}\n",
               shape.downMbps, run.result.downloadMbps, shape.upMbps(), run.result.uploadMbps,
               shape.roundTripMs, run.result.baseRTTms.value_or(0),
               shape.isBloated ? "bloated" : "small", run.result.responsivenessRPM.value_or(0),
               run.seconds, run.shareOfACore * 100, good ? "" : " not true");
    std::fflush(stdout);
}

/// A case that fails gets a second chance: the machine may have been crowded.
std::optional<Run> trueRun(const LineShape& shape, Linux::LinuxHost& host) {
    for (int attempt = 0; attempt < 2; ++attempt) {
        try {
            const Run run = testOn(shape, host);
            const bool good = isTrue(run, shape);
            print(run, shape, good);
            if (good) {
                return run;
            }
        } catch (const SpeedTestError& error) {
            fmt::print("{}\n", error.what());
        }
    }
    return std::nullopt;
}

bool queuesAreTrue(double mbps, int roundTripMs, Linux::LinuxHost& host) {
    const auto small = trueRun({mbps, roundTripMs, false}, host);
    const auto bloated = trueRun({mbps, roundTripMs, true}, host);
    if (!small || !bloated) {
        return false;
    }
    const double ratio = perMinute(*small) / perMinute(*bloated);
    if (!(ratio >= leastBloat)) {
        fmt::print("The bloated queue made it only {:.1f} times less responsive.\n", ratio);
        return false;
    }
    return true;
}

} // namespace

bool speedIsTrue(Linux::LinuxHost& host, const std::vector<double>& rates) {
    fmt::print(
        "| Down, Mbit/s | Said | Up, Mbit/s | Said | Round trip | Said | Queue | Round trips "
        "a minute, said | Took | Of one core |\n|---|---|---|---|---|---|---|---|---|---|\n");
    bool good = true;
    std::vector<double> memory;
    for (const double mbps : rates) {
        for (const int roundTripMs : {10, 80}) {
            good &= queuesAreTrue(mbps, roundTripMs, host);
            memory.push_back(residentBytes());
        }
    }
    const double growth = memory.back() - memory[1];
    fmt::print("\nMemory after the last test: {:.1f} MB, {:+.1f} MB since the fourth.\n",
               memory.back() / megabyte, growth / megabyte);
    return good && growth < mostGrowth;
}

} // namespace pacelet::truth
