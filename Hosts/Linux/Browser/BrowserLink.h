#pragma once

#include "Core/Support/Descriptor.h"
#include "Core/Support/Time.h"
#include "Hosts/Linux/Browser/BridgeMessages.h"
#include "Hosts/Linux/Browser/BridgeWire.h"

#include <chrono>
#include <cstdint>
#include <mutex>
#include <stdexcept>
#include <string>

namespace pacelet::Linux {

/// Why a browser gave no answer.
class LinkError : public std::runtime_error {
public:
    enum class Kind {
        lost,    ///< it, or its bridge, has gone
        late,    ///< it did not answer in time
        tooLong, ///< the request is more than a browser takes
        refused, ///< it answered that it cannot do that
    };

    LinkError(Kind kind, const std::string& message)
        : std::runtime_error{message},
          kind_{kind} {}

    Kind kind() const { return kind_; }

private:
    Kind kind_;
};

/// The connection to one profile of a running browser. Safe from any thread; one request at a time.
class BrowserLink {
public:
    /// `number` is this connection's alone; `socket` does not block.
    BrowserLink(Descriptor socket, std::int64_t number, std::int32_t browserPid)
        : socket_{std::move(socket)},
          number_{number},
          browserPid_{browserPid} {}

    int descriptor() const { return socket_.get(); }
    std::int64_t number() const { return number_; }
    std::int32_t browserPid() const { return browserPid_; }

    /// Asks, and waits for the answer. Throws `LinkError`. What comes after its time is dropped.
    BridgeMessages::Reply ask(const BridgeMessages::Request& request, Seconds limit = patience);

    static constexpr Seconds patience{20};

private:
    using Deadline = std::chrono::steady_clock::time_point;

    void send(std::string_view bytes, Deadline deadline);
    void receive(Deadline deadline);
    void waitFor(short event, Deadline deadline) const;
    [[noreturn]] void lose() const;

    const Descriptor socket_;
    const std::int64_t number_;
    const std::int32_t browserPid_;
    std::mutex mutex_;
    std::int64_t lastID_ = 0;
    BridgeWire::FrameReader replies_{BridgeWire::longestReply};
};

} // namespace pacelet::Linux
