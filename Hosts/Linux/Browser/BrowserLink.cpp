#include "Hosts/Linux/Browser/BrowserLink.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>

namespace pacelet::Linux {

namespace {

bool mayTryAgain() {
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

} // namespace

BridgeMessages::Reply BrowserLink::ask(const BridgeMessages::Request& request, Seconds limit) {
    const std::lock_guard lock{mutex_};
    const auto deadline = std::chrono::steady_clock::now() +
                          std::chrono::duration_cast<std::chrono::steady_clock::duration>(limit);
    const std::int64_t id = ++lastID_;
    const std::string message = BridgeMessages::write(id, request);
    if (message.size() > BridgeWire::longestRequest) {
        throw LinkError{LinkError::Kind::tooLong, "An address is too long to be opened again."};
    }
    send(BridgeWire::frame(message), deadline);
    for (;;) {
        while (const auto answer = replies_.next()) {
            auto reply = BridgeMessages::parse(*answer);
            if (!reply || reply->id != id) {
                continue;
            }
            if (reply->error) {
                throw LinkError{LinkError::Kind::refused, *reply->error};
            }
            return *std::move(reply);
        }
        receive(deadline);
    }
}

void BrowserLink::send(std::string_view bytes, Deadline deadline) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (!mayTryAgain()) {
            lose();
        } else {
            waitFor(POLLOUT, deadline);
        }
    }
}

void BrowserLink::receive(Deadline deadline) {
    std::array<char, 65536> buffer;
    waitFor(POLLIN, deadline);
    const ssize_t count = ::recv(socket_.get(), buffer.data(), buffer.size(), 0);
    if (count < 0 && mayTryAgain()) {
        return;
    }
    if (count <= 0 || !replies_.feed({buffer.data(), static_cast<std::size_t>(count)})) {
        lose();
    }
}

void BrowserLink::waitFor(short event, Deadline deadline) const {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd source{socket_.get(), event, 0};
    const bool isTime = left.count() > 0;
    if (!isTime || (::poll(&source, 1, static_cast<int>(left.count())) == 0)) {
        throw LinkError{LinkError::Kind::late,
                        fmt::format("It didn't answer within {:.0f} seconds.", patience.count())};
    }
}

void BrowserLink::lose() const {
    // What cannot be made out any more is of no use: whoever watches the link sees it end.
    ::shutdown(socket_.get(), SHUT_RDWR);
    throw LinkError{LinkError::Kind::lost, "Connection is invalid."};
}

} // namespace pacelet::Linux
