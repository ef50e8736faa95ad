#include "Hosts/Linux/Speed/NetworkQualityTool.h"

#include "Core/Support/JsonWriter.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Speed/SpeedFailure.h"
#include "Hosts/Linux/Speed/SpeedMeasurement.h"
#include "Hosts/Linux/Speed/WorkingConditions.h"

#include <cmath>
#include <csignal>
#include <future>
#include <optional>
#include <utility>

namespace pacelet::Linux {

namespace {

constexpr std::int32_t usageError = 64;
constexpr std::int32_t noResult = 1;

std::optional<Seconds> timeLimit(const std::vector<std::string>& arguments) {
    constexpr std::int64_t longest = 60;
    if (arguments.size() != 3 || arguments[0] != "-c" || arguments[1] != "-M") {
        return std::nullopt;
    }
    const auto seconds = parseInteger<std::int64_t>(arguments[2]);
    if (!seconds || *seconds < 1 || *seconds > longest) {
        return std::nullopt;
    }
    return Seconds{static_cast<double>(*seconds)};
}

void writeDirection(JsonWriter& json, const std::string& prefix, const DirectionFigures& figures) {
    json.key(prefix + "_flows").value(static_cast<std::int64_t>(figures.connections));
    if (figures.roundTripsPerMinute) {
        json.key(prefix + "_responsiveness").value(*figures.roundTripsPerMinute);
    }
    json.key(prefix + "_throughput")
        .value(static_cast<std::int64_t>(std::llround(figures.bitsPerSecond)));
}

std::string document(const SpeedFigures& figures) {
    constexpr double millisecondsPerSecond = 1000;
    JsonWriter json;
    json.beginObject();
    json.key("base_rtt").value(figures.idleRoundTrip.count() * millisecondsPerSecond);
    writeDirection(json, "dl", figures.download);
    if (const auto both = combinedPerMinute(figures.download.roundTripsPerMinute,
                                            figures.upload.roundTripsPerMinute)) {
        json.key("responsiveness").value(*both);
    }
    writeDirection(json, "ul", figures.upload);
    json.endObject();
    return json.take() + '\n';
}

/// Writing into a connection that the other side has closed must not end the program.
SpeedFigures measureWithoutSignals(const SpeedServer& server, Seconds limit,
                                   const std::atomic<bool>& stopped) {
    const auto measure = [&] {
        sigset_t brokenPipe;
        ::sigemptyset(&brokenPipe);
        ::sigaddset(&brokenPipe, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
        return measureSpeed(server, limit, stopped);
    };
    return std::async(std::launch::async, measure).get();
}

} // namespace

NetworkQualityTool::NetworkQualityTool(SpeedServer server)
    : server_{std::move(server)} {}

Shell::Output NetworkQualityTool::run(const std::vector<std::string>& arguments) {
    const auto limit = timeLimit(arguments);
    if (!limit) {
        return {usageError, "",
                "networkQuality: these arguments are not understood\n"
                "usage: networkQuality -c -M SECONDS\n"};
    }
    try {
        return {0, document(measureWithoutSignals(server_, *limit, stopped_)), ""};
    } catch (const SpeedFailure& failure) {
        return {noResult, "", "networkQuality: " + std::string{failure.what()} + '\n'};
    }
}

} // namespace pacelet::Linux
