#include "Hosts/Linux/Browser/BridgeWire.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace pacelet::Linux::BridgeWire {

Header header(std::size_t length) {
    const auto told = static_cast<std::uint32_t>(length);
    Header bytes{};
    std::memcpy(bytes.data(), &told, bytes.size());
    return bytes;
}

std::size_t length(const Header& header) {
    std::uint32_t told = 0;
    std::memcpy(&told, header.data(), header.size());
    return told;
}

std::string frame(std::string_view message) {
    const Header head = header(message.size());
    std::string bytes;
    bytes.reserve(head.size() + message.size());
    bytes.append(head.data(), head.size()).append(message);
    return bytes;
}

std::optional<std::size_t> FrameReader::announced() const {
    Header head{};
    if (bytes_.size() < head.size()) {
        return std::nullopt;
    }
    std::copy_n(bytes_.begin(), head.size(), head.begin());
    return length(head);
}

bool FrameReader::feed(std::string_view bytes) {
    bytes_.append(bytes);
    return announced().value_or(0) <= longest_;
}

std::optional<std::string> FrameReader::next() {
    const auto size = announced();
    if (!size || *size > longest_ || bytes_.size() < sizeof(Header) + *size) {
        return std::nullopt;
    }
    std::string message = bytes_.substr(sizeof(Header), *size);
    bytes_.erase(0, sizeof(Header) + *size);
    return message;
}

std::size_t FrameReader::wanted() const {
    const std::size_t whole = sizeof(Header) + announced().value_or(0);
    return whole - std::min(whole, bytes_.size());
}

std::string standardFolder() {
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    struct stat facts {};
    if (runtime != nullptr && *runtime == '/' && ::stat(runtime, &facts) == 0 &&
        S_ISDIR(facts.st_mode)) {
        return std::string{runtime} + "/pacelet";
    }
    const char* const temporary = std::getenv("TMPDIR");
    return std::string{temporary != nullptr && *temporary == '/' ? temporary : "/tmp"} +
           "/pacelet-" + std::to_string(::getuid());
}

std::string socketPath(const std::string& folder) {
    return folder + '/' + std::string{socketName};
}

bool secureFolder(const std::string& folder) {
    ::mkdir(folder.c_str(), S_IRWXU);
    struct stat facts {};
    if (::lstat(folder.c_str(), &facts) != 0 || !S_ISDIR(facts.st_mode) ||
        facts.st_uid != ::geteuid()) {
        return false;
    }
    const bool isClosed = (facts.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isClosed || ::chmod(folder.c_str(), S_IRWXU) == 0;
}

Descriptor connectTo(const std::string& folder) {
    const std::string path = socketPath(folder);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return {};
    }
    path.copy(address.sun_path, path.size());
    Descriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    if (!socket ||
        ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return {};
    }
    const auto peer = peerOf(socket);
    return peer && peer->uid == ::geteuid() ? std::move(socket) : Descriptor{};
}

std::optional<Peer> peerOf(const Descriptor& socket) {
    ucred credentials{};
    socklen_t size = sizeof credentials;
    if (::getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0) {
        return std::nullopt;
    }
    return Peer{credentials.pid, credentials.uid};
}

} // namespace pacelet::Linux::BridgeWire
