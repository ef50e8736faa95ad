#include "Hosts/Linux/Speed/Probes.h"

#include <utility>

namespace pacelet::Linux {

namespace {

constexpr std::size_t mostUnderWay = 20;
constexpr std::int64_t largestAnswer = std::int64_t{64} * 1024;

} // namespace

Probes::Probes(TransferLoop& loop, std::string url)
    : loop_{loop},
      url_{std::move(url)} {}

void Probes::sendSeparate() {
    send(separate_, ConnectionUse::separate);
}

void Probes::sendLoaded() {
    send(loaded_, ConnectionUse::joining);
}

void Probes::send(std::vector<Probe>& probes, ConnectionUse use) {
    if (probes.size() < mostUnderWay) {
        probes.push_back({std::make_unique<Transfer>(loop_, url_, use), steadyNow()});
        probes.back().transfer->limitTo(largestAnswer);
    }
}

void Probes::collect() {
    const auto hasEnded = [](const Probe& probe) { return probe.transfer->hasEnded(); };
    for (const auto& [transfer, sentAt] : separate_) {
        if (!transfer->hasEnded()) {
            continue;
        }
        transfer->requireSuccess();
        trips_.connects.push_back(transfer->connectTime());
        if (const auto time = transfer->handshakeTime()) {
            trips_.handshakes.push_back(*time);
        }
        trips_.requests.push_back(transfer->answerTime());
    }
    for (const auto& [transfer, sentAt] : loaded_) {
        if (!transfer->hasEnded()) {
            continue;
        }
        transfer->requireSuccess();
        if (transfer->joinedAnother()) {
            trips_.loaded.push_back(transfer->answerTime());
        }
    }
    std::erase_if(separate_, hasEnded);
    std::erase_if(loaded_, hasEnded);
}

RoundTrips Probes::unanswered() const {
    RoundTrips trips;
    const MonotonicTime now = steadyNow();
    for (const Probe& probe : separate_) {
        // Three round trips make one of these.
        trips.requests.push_back((now - probe.sentAt) / 3);
    }
    return trips;
}

} // namespace pacelet::Linux
