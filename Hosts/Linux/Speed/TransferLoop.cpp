#include "Hosts/Linux/Speed/TransferLoop.h"

#include "Hosts/Linux/Speed/SpeedFailure.h"
#include "Hosts/Linux/Speed/Transfer.h"

#include <algorithm>
#include <cmath>

namespace pacelet::Linux {

namespace {

/// How long a stop may go unnoticed.
constexpr Seconds longestWait{0.05};

void require(const Curl& curl, CURLMcode code) {
    if (code != CURLM_OK) {
        throw SpeedFailure{curl.multiStrerror(code)};
    }
}

} // namespace

MonotonicTime steadyNow() {
    return std::chrono::time_point_cast<Seconds>(std::chrono::steady_clock::now());
}

TransferLoop::TransferLoop(const SpeedServer& server, const std::string& endpoint,
                           MonotonicTime deadline, const std::atomic<bool>& stopped)
    : server_{server},
      deadline_{deadline},
      stopped_{stopped},
      multi_{curl_.multiInit()} {
    if (!multi_) {
        throw SpeedFailure{"out of memory"};
    }
    if (!endpoint.empty()) {
        connectTo_.reset(curl_.slistAppend(nullptr, ("::" + endpoint + ':').c_str()));
    }
    // A server would have to be asked before each upload whether it wants it.
    headers_.reset(curl_.slistAppend(nullptr, "Expect:"));
}

void TransferLoop::turn(MonotonicTime until) {
    int underWay = 0;
    require(curl_, curl_.multiPerform(multi_.get(), &underWay));
    const Seconds wait =
        std::clamp(std::min(until, deadline_) - steadyNow(), Seconds{}, longestWait);
    require(curl_, curl_.multiPoll(multi_.get(), nullptr, 0,
                                   static_cast<int>(std::ceil(wait.count() * 1000)), nullptr));
    if (stopped_) {
        throw SpeedFailure{"stopped"};
    }
    require(curl_, curl_.multiPerform(multi_.get(), &underWay));
    int left = 0;
    while (const CURLMsg* message = curl_.multiInfoRead(multi_.get(), &left)) {
        char* transfer = nullptr;
        curl_.easyGetinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        reinterpret_cast<Transfer*>(transfer)->result_ = message->data.result;
    }
}

} // namespace pacelet::Linux
