#pragma once

#include "Core/Support/Descriptor.h"
#include "Core/Support/Precondition.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <fmt/format.h>
#include <map>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <vector>

namespace pacelet::testing {

inline std::string answerOf(std::int64_t bytes) {
    return fmt::format("HTTP/1.1 200 OK\r\nContent-Length: {}\r\n\r\n", bytes);
}

/// What becomes of a request.
struct Answer {
    enum class Ending { closes, hangs, resets };

    std::string head;
    std::int64_t bytes = 0; ///< it sends behind the head, or takes of a post before the head
    Ending ending = Ending::closes;
};

using Answers = std::map<std::string, Answer>;

/// A server of speed tests on the loopback interface: HTTP/1.1, one request a connection, and each
/// connection at the pace of a line, so that no processor is what limits it.
class ScriptedServer {
public:
    /// All is well with it but for `faults`, by path.
    explicit ScriptedServer(Answers faults)
        : answers_{std::move(faults)} {
        constexpr std::int64_t endless = 1'000'000'000'000;
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        precondition(::bind(listener_.get(), reinterpret_cast<const sockaddr*>(&address), size) ==
                         0,
                     "no port is free");
        ::listen(listener_.get(), 64);
        ::getsockname(listener_.get(), reinterpret_cast<sockaddr*>(&address), &size);
        base_ = fmt::format("http://127.0.0.1:{}", ntohs(address.sin_port));
        const std::string document =
            fmt::format(R"({{"version":1,"urls":{{"small_download_url":"{0}/small",)"
                        R"("large_download_url":"{0}/large","upload_url":"{0}/upload"}}}})",
                        base_);
        answers_.insert({{"/nq", {answerOf(static_cast<std::int64_t>(document.size())) + document}},
                         {"/small", {answerOf(1), 1}},
                         {"/large", {answerOf(endless), endless}},
                         {"/upload", {answerOf(0), endless}}});
        acceptor_ = std::thread{[this] { acceptAll(); }};
    }
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;
    ~ScriptedServer() {
        ends_ = true;
        ::shutdown(listener_.get(), SHUT_RDWR);
        acceptor_.join();
        std::ranges::for_each(connections_, &std::thread::join);
    }

    std::string configuration() const { return base_ + "/nq"; }

private:
    void acceptAll() {
        for (int socket = 0; socket >= 0;) {
            socket = ::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC);
            if (socket >= 0) {
                connections_.emplace_back([this, socket] { serve(Descriptor{socket}); });
            }
        }
    }

    static std::string received(const Descriptor& socket) {
        std::array<char, 65536> room; // NOLINT(*-member-init): filled by the kernel
        const ssize_t count = ::recv(socket.get(), room.data(), room.size(), 0);
        return {room.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }

    void waitUntilGone(const Descriptor& socket) const {
        pollfd gone{socket.get(), POLLRDHUP, 0};
        while (!ends_ && ::poll(&gone, 1, 10) == 0) {
        }
    }

    void serve(const Descriptor& socket) {
        if (isDead_) {
            waitUntilGone(socket);
            return;
        }
        std::string request = received(socket);
        while (request.find("\r\n\r\n") == std::string::npos) {
            const std::string more = received(socket);
            if (more.empty()) {
                return;
            }
            request += more;
        }
        const std::size_t begin = request.find('/');
        const std::string path = request.substr(begin, request.find(" HTTP") - begin);
        const Answer& answer = answers_.at(path);
        const bool isPost = request.starts_with("POST");
        for (std::int64_t left = answer.bytes; isPost && left > 0;) {
            const auto count = static_cast<std::int64_t>(received(socket).size());
            left = count > 0 ? left - count : 0;
            std::this_thread::sleep_for(pace);
        }
        ::send(socket.get(), answer.head.data(), answer.head.size(), MSG_NOSIGNAL);
        static const std::string piece(65536, 'x');
        for (std::int64_t left = isPost ? 0 : answer.bytes; left > 0;) {
            const auto size = std::min(left, static_cast<std::int64_t>(piece.size()));
            const ssize_t count =
                ::send(socket.get(), piece.data(), static_cast<std::size_t>(size), MSG_NOSIGNAL);
            left = count > 0 ? left - count : 0;
            std::this_thread::sleep_for(pace);
        }
        if (answer.ending == Answer::Ending::resets) {
            const linger atOnce{1, 0};
            ::setsockopt(socket.get(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        } else if (answer.ending == Answer::Ending::hangs) {
            isDead_ = true;
            waitUntilGone(socket);
        }
    }

    static constexpr std::chrono::milliseconds pace{2}; ///< rest after 64 kB at most

    Answers answers_;
    Descriptor listener_{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    std::string base_;
    std::atomic<bool> ends_ = false;
    std::atomic<bool> isDead_ = false; ///< one that hangs, hangs for all
    std::vector<std::thread> connections_;
    std::thread acceptor_;
};

} // namespace pacelet::testing
