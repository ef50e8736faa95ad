#pragma once

#include "Core/Support/Time.h"
#include "Hosts/Linux/Speed/TransferLoop.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::Linux {

/// Over what connection something is asked for.
enum class ConnectionUse {
    separate, ///< one of its own, closed afterwards
    loading,  ///< one of its own, which others may join
    joining   ///< one that is there for loading
};

/// Counts what the other side of some sockets has acknowledged: what a program has written says
/// little, as long as most of it waits in this machine.
class SentBytes {
public:
    /// Bytes of TCP payload, those of closed sockets included.
    std::int64_t acknowledged() const;

    void opened(int socket);
    void closed(int socket);

private:
    std::vector<int> sockets_;
    std::int64_t ofClosed_ = 0;
};

/// One request of a test, under way from its making on.
class Transfer {
public:
    /// Loads the file at `url`.
    Transfer(TransferLoop& loop, const std::string& url, ConnectionUse use);

    /// Posts zeros to `url` without end; `sent` outlives the loop.
    Transfer(TransferLoop& loop, const std::string& url, SentBytes& sent);

    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;
    ~Transfer();

    /// More than so much is a fault. Without it a file may be of any size.
    void limitTo(std::int64_t bytes) { limit_ = bytes; }
    /// Keeps the file's text, for a file with a limit.
    void keepText() { keepsText_ = true; }

    /// Bytes of the file so far, or bytes handed over for sending.
    std::int64_t moved() const { return moved_; }
    const std::string& text() const { return text_; }

    bool hasEnded() const { return result_.has_value(); }
    /// Throws `SpeedFailure` unless it has ended well, with a status of 200 to 299.
    void requireSuccess() const;
    /// It went, over HTTP/2, along with others on a connection that stood already.
    bool joinedAnother() const;

    Seconds connectTime() const;
    /// Nothing where there was none.
    std::optional<Seconds> handshakeTime() const;
    /// From the request to the first byte of the answer.
    Seconds answerTime() const;

private:
    friend class TransferLoop;

    static std::size_t take(const char* data, std::size_t size, std::size_t count, void* transfer);
    static std::size_t give(char* room, std::size_t size, std::size_t count, void* transfer);

    template<typename Value>
    void set(CURLoption option, Value value);
    Seconds timeBetween(CURLINFO begin, CURLINFO end) const;
    long status() const;
    void prepare(const std::string& url, ConnectionUse use);
    void start();

    struct Closer {
        void operator()(CURL* handle) const { Curl::library().easyCleanup(handle); }
    };

    TransferLoop& loop_;
    const Curl& curl_;
    std::unique_ptr<CURL, Closer> handle_;
    std::array<char, CURL_ERROR_SIZE> error_{};
    std::optional<std::int64_t> limit_;
    bool keepsText_ = false;
    std::string text_;
    std::int64_t moved_ = 0;
    std::optional<CURLcode> result_;
};

} // namespace pacelet::Linux
