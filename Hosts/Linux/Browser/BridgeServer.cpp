#include "Hosts/Linux/Browser/BridgeServer.h"

#include "Hosts/Linux/Proc/FolderReader.h"
#include "Hosts/Linux/Proc/ProcStat.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <utility>

namespace pacelet::Linux {

namespace {

/// More than anybody has browsers and profiles open.
constexpr std::size_t mostLinks = 64;

/// A socket that listens under its name from the moment at which it can be seen there.
Descriptor listenIn(const std::string& folder) {
    const std::string path = BridgeWire::socketPath(folder);
    const std::string early = path + ".new";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (!BridgeWire::secureFolder(folder) || early.size() >= sizeof address.sun_path) {
        return {};
    }
    early.copy(address.sun_path, early.size());
    ::unlink(early.c_str());
    Descriptor listener{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    if (!listener || ::fchmod(listener.get(), S_IRUSR | S_IWUSR) != 0 ||
        ::bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::chmod(early.c_str(), S_IRUSR | S_IWUSR) != 0 ||
        ::listen(listener.get(), static_cast<int>(mostLinks)) != 0 ||
        ::rename(early.c_str(), path.c_str()) != 0) {
        return {};
    }
    return listener;
}

/// The browser is what has started the bridge.
std::int32_t parentOf(std::int32_t pid) {
    ReadBuffer buffer;
    const Descriptor file{::open(fmt::format("/proc/{}/stat", pid).c_str(), O_RDONLY | O_CLOEXEC)};
    const auto line = file ? readWhole(file, buffer) : std::nullopt;
    const auto stat = line ? parseProcStat(*line) : std::nullopt;
    return stat ? stat->ppid : 0;
}

} // namespace

BridgeServer::BridgeServer(const std::string& folder, std::function<void()> changed)
    : changed_{std::move(changed)},
      stop_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)},
      listener_{listenIn(folder)} {
    if (listener_ && stop_) {
        thread_ = std::thread{[this] { serve(); }};
    }
}

BridgeServer::~BridgeServer() {
    if (thread_.joinable()) {
        ::eventfd_write(stop_.get(), 1);
        thread_.join();
    }
}

BridgeServer::Links BridgeServer::links() const {
    const std::lock_guard lock{mutex_};
    return links_;
}

void BridgeServer::serve() {
    while (waitForChange(links())) {
    }
}

bool BridgeServer::waitForChange(const Links& links) {
    std::vector<pollfd> sources{{stop_.get(), POLLIN, 0}, {listener_.get(), POLLIN, 0}};
    for (const auto& link : links) {
        sources.push_back({link->descriptor(), POLLRDHUP, 0});
    }
    ::poll(sources.data(), sources.size(), -1);
    if (sources[0].revents != 0) {
        return false;
    }
    bool hasChanged = false;
    for (std::size_t index = 0; index < links.size(); ++index) {
        if (sources[index + 2].revents != 0) {
            const std::lock_guard lock{mutex_};
            std::erase(links_, links[index]);
            hasChanged = true;
        }
    }
    if (sources[1].revents != 0) {
        accept();
        hasChanged = true;
    }
    if (hasChanged && changed_) {
        changed_();
    }
    return true;
}

void BridgeServer::accept() {
    Descriptor socket{::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)};
    const auto peer = socket ? BridgeWire::peerOf(socket) : std::nullopt;
    const std::lock_guard lock{mutex_};
    if (peer && peer->uid == ::geteuid() && links_.size() < mostLinks) {
        links_.push_back(
            std::make_shared<BrowserLink>(std::move(socket), ++lastNumber_, parentOf(peer->pid)));
    }
}

} // namespace pacelet::Linux
