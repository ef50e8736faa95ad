#include "Hosts/Linux/Speed/TransferLoop.h"

#include "Hosts/Linux/Speed/SpeedFailure.h"
#include "Hosts/Linux/Speed/Transfer.h"

#include <algorithm>
#include <cmath>

namespace pacelet::Linux {

namespace {

/// How long a stop may go unnoticed.
constexpr Seconds longestWait{0.05};

/// The library wants to be set up once, before all threads that use it.
void setUpLibrary() {
    static const CURLcode result = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (result != CURLE_OK) {
        throw SpeedFailure{curl_easy_strerror(result)};
    }
}

CURLM* newMulti() {
    setUpLibrary();
    CURLM* multi = curl_multi_init();
    if (multi == nullptr) {
        throw SpeedFailure{"out of memory"};
    }
    return multi;
}

void require(CURLMcode code) {
    if (code != CURLM_OK) {
        throw SpeedFailure{curl_multi_strerror(code)};
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
      multi_{newMulti()} {
    if (!endpoint.empty()) {
        connectTo_.reset(curl_slist_append(nullptr, ("::" + endpoint + ':').c_str()));
    }
    // A server would have to be asked before each upload whether it wants it.
    headers_.reset(curl_slist_append(nullptr, "Expect:"));
}

void TransferLoop::turn(MonotonicTime until) {
    int underWay = 0;
    require(curl_multi_perform(multi_.get(), &underWay));
    const Seconds wait =
        std::clamp(std::min(until, deadline_) - steadyNow(), Seconds{}, longestWait);
    require(curl_multi_poll(multi_.get(), nullptr, 0,
                            static_cast<int>(std::ceil(wait.count() * 1000)), nullptr));
    if (stopped_) {
        throw SpeedFailure{"stopped"};
    }
    require(curl_multi_perform(multi_.get(), &underWay));
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
        char* transfer = nullptr;
        curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
        reinterpret_cast<Transfer*>(transfer)->result_ = message->data.result;
    }
}

} // namespace pacelet::Linux
