#include "Hosts/Linux/Speed/Transfer.h"

#include "Hosts/Linux/Speed/SpeedFailure.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>
// The kernel's own header: the library's has an older tcp_info.
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace pacelet::Linux {

namespace {

/// What waits here unsent delays everything behind it, and tells nothing of the line.
constexpr int longestUnsent = 16 * 1024;

constexpr long connectSeconds = 10;
constexpr long uploadRoom = 64L * 1024;

std::int64_t acknowledgedBy(int socket) {
    tcp_info info{};
    socklen_t size = sizeof info;
    return ::getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) == 0
               ? static_cast<std::int64_t>(info.tcpi_bytes_acked)
               : 0;
}

int socketOpened(void* sent, curl_socket_t socket, curlsocktype) {
    ::setsockopt(socket, IPPROTO_TCP, TCP_NOTSENT_LOWAT, &longestUnsent, sizeof longestUnsent);
    static_cast<SentBytes*>(sent)->opened(socket);
    return CURL_SOCKOPT_OK;
}

int socketClosed(void* sent, curl_socket_t socket) {
    static_cast<SentBytes*>(sent)->closed(socket);
    return ::close(socket);
}

} // namespace

std::int64_t SentBytes::acknowledged() const {
    std::int64_t sum = ofClosed_;
    for (const int socket : sockets_) {
        sum += acknowledgedBy(socket);
    }
    return sum;
}

void SentBytes::opened(int socket) {
    sockets_.push_back(socket);
}

void SentBytes::closed(int socket) {
    if (std::erase(sockets_, socket) > 0) {
        ofClosed_ += acknowledgedBy(socket);
    }
}

Transfer::Transfer(TransferLoop& loop, const std::string& url, ConnectionUse use)
    : loop_{loop},
      curl_{loop.curl_} {
    prepare(url, use);
    set(CURLOPT_WRITEFUNCTION, &Transfer::take);
    set(CURLOPT_WRITEDATA, this);
    start();
}

Transfer::Transfer(TransferLoop& loop, const std::string& url, SentBytes& sent)
    : loop_{loop},
      curl_{loop.curl_} {
    prepare(url, ConnectionUse::loading);
    set(CURLOPT_UPLOAD, 1L);
    set(CURLOPT_CUSTOMREQUEST, "POST");
    set(CURLOPT_UPLOAD_BUFFERSIZE, uploadRoom);
    set(CURLOPT_READFUNCTION, &Transfer::give);
    set(CURLOPT_READDATA, this);
    set(CURLOPT_WRITEFUNCTION, &Transfer::take);
    set(CURLOPT_WRITEDATA, this);
    set(CURLOPT_SOCKOPTFUNCTION, &socketOpened);
    set(CURLOPT_SOCKOPTDATA, &sent);
    set(CURLOPT_CLOSESOCKETFUNCTION, &socketClosed);
    set(CURLOPT_CLOSESOCKETDATA, &sent);
    start();
}

Transfer::~Transfer() {
    curl_.multiRemoveHandle(loop_.multi_.get(), handle_.get());
}

template<typename Value>
void Transfer::set(CURLoption option, Value value) {
    const CURLcode code = curl_.easySetopt(handle_.get(), option, value);
    if (code != CURLE_OK) {
        throw SpeedFailure{curl_.easyStrerror(code)};
    }
}

void Transfer::prepare(const std::string& url, ConnectionUse use) {
    handle_.reset(curl_.easyInit());
    if (!handle_) {
        throw SpeedFailure{"out of memory"};
    }
    const bool isEncrypted = !loop_.server_.configuration.starts_with("http://");
    set(CURLOPT_URL, url.c_str());
    set(CURLOPT_PROTOCOLS_STR, isEncrypted ? "https" : "http");
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
    set(CURLOPT_PRIVATE, this);
    set(CURLOPT_ERRORBUFFER, error_.data());
    set(CURLOPT_USERAGENT, "Pacelet");
    set(CURLOPT_HTTPHEADER, loop_.headers_.get());
    set(CURLOPT_CONNECT_TO, loop_.connectTo_.get());
    set(CURLOPT_CONNECTTIMEOUT, connectSeconds);
    set(CURLOPT_NOSIGNAL, 1L);
    // An answer from the resolver that does not come must not hold the end of a test.
    set(CURLOPT_QUICK_EXIT, 1L);
    if (!loop_.server_.certificates.empty()) {
        set(CURLOPT_CAINFO, loop_.server_.certificates.c_str());
        set(CURLOPT_CAPATH, nullptr);
    }
    // The library joins connections only of the same bounds on TLS; that keeps what joins others
    // off those that are meant to be alone.
    constexpr long anyFromTLS13 = CURL_SSLVERSION_TLSv1_3;
    constexpr long onlyTLS13 = anyFromTLS13 | long{CURL_SSLVERSION_MAX_TLSv1_3};
    set(CURLOPT_SSLVERSION, use == ConnectionUse::separate ? onlyTLS13 : anyFromTLS13);
    set(CURLOPT_FRESH_CONNECT, use == ConnectionUse::joining ? 0L : 1L);
    set(CURLOPT_FORBID_REUSE, use == ConnectionUse::separate ? 1L : 0L);
    set(CURLOPT_PIPEWAIT, 1L);
}

void Transfer::start() {
    const CURLMcode code = curl_.multiAddHandle(loop_.multi_.get(), handle_.get());
    if (code != CURLM_OK) {
        throw SpeedFailure{curl_.multiStrerror(code)};
    }
}

std::size_t Transfer::take(const char* data, std::size_t size, std::size_t count, void* transfer) {
    Transfer& self = *static_cast<Transfer*>(transfer);
    const std::size_t bytes = size * count;
    self.moved_ += static_cast<std::int64_t>(bytes);
    if (self.limit_ && self.moved_ > *self.limit_) {
        return 0;
    }
    if (self.keepsText_) {
        self.text_.append(data, bytes);
    }
    return bytes;
}

std::size_t Transfer::give(char* room, std::size_t size, std::size_t count, void* transfer) {
    const std::size_t bytes = size * count;
    std::memset(room, 0, bytes);
    static_cast<Transfer*>(transfer)->moved_ += static_cast<std::int64_t>(bytes);
    return bytes;
}

void Transfer::requireSuccess() const {
    if (!result_) {
        throw SpeedFailure{"the server does not answer"};
    }
    if (limit_ && moved_ > *limit_) {
        throw SpeedFailure{"the server's answer is too long"};
    }
    if (*result_ != CURLE_OK) {
        throw SpeedFailure{error_.front() != '\0' ? error_.data() : curl_.easyStrerror(*result_)};
    }
    if (status() < 200 || status() > 299) {
        throw SpeedFailure{fmt::format("the server answers with status {}", status())};
    }
}

long Transfer::status() const {
    long status = 0;
    curl_.easyGetinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &status);
    return status;
}

bool Transfer::joinedAnother() const {
    long made = 0;
    long version = 0;
    curl_.easyGetinfo(handle_.get(), CURLINFO_NUM_CONNECTS, &made);
    curl_.easyGetinfo(handle_.get(), CURLINFO_HTTP_VERSION, &version);
    return made == 0 && version == CURL_HTTP_VERSION_2_0;
}

Seconds Transfer::timeBetween(CURLINFO begin, CURLINFO end) const {
    curl_off_t from = 0;
    curl_off_t to = 0;
    curl_.easyGetinfo(handle_.get(), begin, &from);
    curl_.easyGetinfo(handle_.get(), end, &to);
    return std::chrono::microseconds{std::max<curl_off_t>(to - from, 0)};
}

Seconds Transfer::connectTime() const {
    return timeBetween(CURLINFO_NAMELOOKUP_TIME_T, CURLINFO_CONNECT_TIME_T);
}

std::optional<Seconds> Transfer::handshakeTime() const {
    const Seconds time = timeBetween(CURLINFO_CONNECT_TIME_T, CURLINFO_APPCONNECT_TIME_T);
    return time > Seconds{} ? std::optional{time} : std::nullopt;
}

Seconds Transfer::answerTime() const {
    return timeBetween(CURLINFO_PRETRANSFER_TIME_T, CURLINFO_STARTTRANSFER_TIME_T);
}

} // namespace pacelet::Linux
