#pragma once

#include "Core/Support/Time.h"
#include "Hosts/Linux/Speed/Curl.h"
#include "Hosts/Linux/Speed/SpeedServer.h"

#include <atomic>
#include <memory>
#include <string>

namespace pacelet::Linux {

MonotonicTime steadyNow();

/// One set of connections, and the thread's way to wait for them. All that is loaded over it dies
/// before it.
class TransferLoop {
public:
    /// `stopped` ends every wait at once; no wait goes beyond `deadline`. `endpoint` is the host to
    /// connect to; empty for that of each address. All that is referred to outlives the loop.
    /// Throws `SpeedFailure` where there is no library that loads anything.
    TransferLoop(const SpeedServer& server, const std::string& endpoint, MonotonicTime deadline,
                 const std::atomic<bool>& stopped);

    /// Moves what is there to be moved, waiting until `until` at most for something to come.
    /// Throws `SpeedFailure` when stopped.
    void turn(MonotonicTime until);

    MonotonicTime deadline() const { return deadline_; }

private:
    friend class Transfer;

    struct Closer {
        void operator()(CURLM* multi) const { Curl::library().multiCleanup(multi); }
    };
    struct ListFreer {
        void operator()(curl_slist* list) const { Curl::library().slistFreeAll(list); }
    };

    const Curl& curl_ = Curl::library();
    const SpeedServer& server_;
    MonotonicTime deadline_;
    const std::atomic<bool>& stopped_;
    std::unique_ptr<curl_slist, ListFreer> connectTo_;
    std::unique_ptr<curl_slist, ListFreer> headers_;
    std::unique_ptr<CURLM, Closer> multi_;
};

} // namespace pacelet::Linux
