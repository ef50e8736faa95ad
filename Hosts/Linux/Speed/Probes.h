#pragma once

#include "Hosts/Linux/Speed/Transfer.h"
#include "Hosts/Linux/Speed/WorkingConditions.h"

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace pacelet::Linux {

/// Small requests that tell how long a round trip takes.
class Probes {
public:
    Probes(TransferLoop& loop, std::string url);

    /// Sends one on a connection of its own, unless many are still on their way.
    void sendSeparate();
    /// Sends one along with the load, unless many are still on their way.
    void sendLoaded();

    std::size_t underWay() const { return separate_.size() + loaded_.size(); }

    /// Takes in what has come back. Throws `SpeedFailure` when one failed.
    void collect();

    /// The round trips since the last call.
    RoundTrips takeTrips() { return std::exchange(trips_, {}); }

    /// What is still on its way, each as long as it has taken so far: what a line that answers
    /// nobody tells.
    RoundTrips unanswered() const;

private:
    struct Probe {
        std::unique_ptr<Transfer> transfer;
        MonotonicTime sentAt{};
    };

    void send(std::vector<Probe>& probes, ConnectionUse use);

    TransferLoop& loop_;
    std::string url_;
    std::vector<Probe> separate_;
    std::vector<Probe> loaded_;
    RoundTrips trips_;
};

} // namespace pacelet::Linux
