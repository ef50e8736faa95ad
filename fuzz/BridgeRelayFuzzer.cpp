#include "Hosts/Linux/Browser/BrowserLink.h"
#include "programs/pacelet-browser-bridge/Relay.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

using namespace pacelet;
using namespace pacelet::Linux;

namespace {

void require(bool condition) {
    if (!condition) {
        __builtin_trap();
    }
}

/// Again for as long as the fuzzer's own clock interrupts it.
template<typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// The program's socket in a folder of its own.
class Listener {
public:
    Listener() {
        std::string name = std::filesystem::temp_directory_path() / "pacelet-fuzz-XXXXXX";
        require(::mkdtemp(name.data()) != nullptr);
        folder_ = name;
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        BridgeWire::socketPath(folder_).copy(address.sun_path, sizeof address.sun_path - 1);
        socket_ = Descriptor{::socket(AF_UNIX, SOCK_STREAM, 0)};
        require(::bind(socket_.get(), reinterpret_cast<const sockaddr*>(&address),
                       sizeof address) == 0 &&
                ::listen(socket_.get(), 1) == 0);
    }
    ~Listener() { std::filesystem::remove_all(folder_); }

    const std::string& folder() const { return folder_; }
    Descriptor accept() const {
        return Descriptor{
            uninterrupted([this] { return ::accept(socket_.get(), nullptr, nullptr); })};
    }

private:
    std::string folder_;
    Descriptor socket_;
};

/// How much of `bytes` are whole frames, and of any frames before one that is too long.
struct Extent {
    std::size_t whole = 0;
    std::size_t fine = 0;
};

Extent extentOf(std::string_view bytes, std::size_t longest) {
    Extent extent;
    BridgeWire::Header header{};
    for (std::size_t at = 0; at < bytes.size();) {
        extent.whole = at;
        extent.fine = bytes.size();
        if (bytes.size() - at < header.size()) {
            return extent;
        }
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), header.size(), header.begin());
        const std::size_t length = BridgeWire::length(header);
        if (length > longest) {
            extent.fine = at;
            return extent;
        }
        if (bytes.size() - at - header.size() < length) {
            return extent;
        }
        at += header.size() + length;
        extent.whole = at;
    }
    return extent;
}

void write(int descriptor, std::string_view bytes) {
    require(uninterrupted([&] { return ::write(descriptor, bytes.data(), bytes.size()); }) ==
            static_cast<ssize_t>(bytes.size()));
}

/// So many bytes, or fewer where there is an end before.
std::string read(int descriptor, std::size_t count) {
    std::string bytes(count, '\0');
    std::size_t filled = 0;
    for (ssize_t got = 1; filled < count && got > 0;) {
        got = uninterrupted(
            [&] { return ::read(descriptor, bytes.data() + filled, count - filled); });
        filled += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    bytes.resize(filled);
    return bytes;
}

/// Whole frames reach the browser, the browser's bytes reach the program, and nothing else does.
void relay(std::string_view fromProgram, std::string_view fromBrowser) {
    static const Listener listener;
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    require(::pipe(in.data()) == 0 && ::pipe(out.data()) == 0);
    const Descriptor bridgeIn{in[0]};
    Descriptor browserOut{in[1]};
    const Descriptor browserIn{out[0]};
    const Descriptor bridgeOut{out[1]};
    std::thread bridge{[&] {
        require(bridge::Relay{bridgeIn.get(), bridgeOut.get(), listener.folder()}.run());
    }};
    const Descriptor program = listener.accept();

    const Extent requests = extentOf(fromProgram, BridgeWire::longestRequest);
    write(program.get(), fromProgram);
    require(read(browserIn.get(), requests.whole) == fromProgram.substr(0, requests.whole));
    const Extent replies = extentOf(fromBrowser, BridgeWire::longestReply);
    write(browserOut.get(), fromBrowser);
    browserOut.reset();
    bridge.join();
    const std::string heard = read(program.get(), fromBrowser.size() + 1);
    require(fromBrowser.starts_with(heard) && heard.size() <= replies.fine);
    // All of it, unless one of the two was left in the middle; a header goes on when whole.
    const bool isFine = requests.whole == fromProgram.size() && replies.fine == fromBrowser.size();
    require(!isFine || heard.size() + std::tuple_size_v<BridgeWire::Header> > fromBrowser.size());
}

/// The program's side of the socket: an answer of its own, or a typed error.
void ask(std::string_view answer) {
    std::array<int, 2> ends{};
    require(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) == 0);
    BrowserLink link{Descriptor{ends[0]}, 1, 1};
    const Descriptor browser{ends[1]};
    write(browser.get(), answer);
    ::shutdown(browser.get(), SHUT_WR);
    try {
        require(link.ask({.ask = "list"}).id == 1);
    } catch (const LinkError& error) {
        require(error.kind() != LinkError::Kind::late);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes{reinterpret_cast<const char*>(data), size};
    if (bytes.size() < 2 || bytes.size() > 1 << 14) {
        return 0;
    }
    const std::size_t cut =
        std::min<std::size_t>(static_cast<unsigned char>(bytes[0]) * 16U, bytes.size() - 1);
    relay(bytes.substr(1, cut), bytes.substr(1 + cut));
    ask(bytes.substr(1));
    return 0;
}
