#include "programs/pacelet-browser-bridge/Relay.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace pacelet::bridge {

namespace {

namespace Wire = Linux::BridgeWire;

constexpr std::size_t chunkBytes = 1 << 16;

void setNonBlocking(int descriptor) {
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

/// Whether a call that moved nothing is to be made again later.
bool mayTryAgain() {
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

} // namespace

Relay::Relay(int fromBrowser, int toBrowser, std::string folder)
    : browserIn_{fromBrowser},
      browserOut_{toBrowser},
      folder_{std::move(folder)},
      events_{::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)} {
    setNonBlocking(browserIn_);
    setNonBlocking(browserOut_);
}

bool Relay::run() {
    if (!Wire::secureFolder(folder_) ||
        ::inotify_add_watch(events_.get(), folder_.c_str(), IN_MOVED_TO | IN_ONLYDIR) < 0) {
        return false;
    }
    connect();
    while (waitForWork()) {
    }
    return true;
}

bool Relay::waitForWork() {
    // As long as something waits to be written on one side, the other is not read.
    const short browserEvents = forProgram_.empty() ? POLLIN : 0;
    const auto programEvents = static_cast<short>((forBrowser_.empty() ? POLLIN : 0) |
                                                  (forProgram_.empty() ? 0 : POLLOUT));
    std::array<pollfd, 4> sources{{{browserIn_, browserEvents, 0},
                                   {forBrowser_.empty() ? -1 : browserOut_, POLLOUT, 0},
                                   {program_ ? program_.get() : -1, programEvents, 0},
                                   {events_.get(), POLLIN, 0}}};
    if (::poll(sources.data(), sources.size(), -1) < 0) {
        return errno == EINTR;
    }
    const auto& [browser, browserOut, program, events] = sources;
    if ((browser.revents & POLLIN) != 0) {
        if (!readBrowser()) {
            return false;
        }
    } else if (browser.revents != 0) {
        return false;
    }
    if (browserOut.revents != 0 && !writeBrowser()) {
        return false;
    }
    if ((program.revents & (POLLIN | POLLHUP | POLLERR)) != 0) {
        readProgram();
    }
    if (program_ && (program.revents & POLLOUT) != 0) {
        writeProgram();
    }
    return events.revents == 0 || readEvents();
}

void Relay::connect() {
    disconnect();
    program_ = Wire::connectTo(folder_);
}

void Relay::disconnect() {
    program_.reset();
    requests_ = Wire::FrameReader{Wire::longestRequest};
    forProgram_ = {};
    isWanted_ = false;
}

bool Relay::readBrowser() {
    std::array<char, chunkBytes> buffer;
    const ssize_t count = ::read(browserIn_, buffer.data(), buffer.size());
    if (count < 0) {
        return mayTryAgain();
    }
    if (count == 0 || !sort({buffer.data(), static_cast<std::size_t>(count)})) {
        return false;
    }
    writeProgram();
    return true;
}

bool Relay::sort(std::string_view bytes) {
    while (!bytes.empty()) {
        if (left_ == 0) {
            header_ += bytes.front();
            bytes.remove_prefix(1);
            Wire::Header head{};
            if (header_.size() < head.size()) {
                continue;
            }
            std::copy_n(header_.begin(), head.size(), head.begin());
            left_ = Wire::length(head);
            if (left_ > Wire::longestReply) {
                return false;
            }
            isWanted_ = static_cast<bool>(program_);
            if (isWanted_) {
                forProgram_ += header_;
            }
            header_.clear();
            continue;
        }
        const std::size_t count = std::min(left_, bytes.size());
        if (isWanted_) {
            forProgram_ += bytes.substr(0, count);
        }
        bytes.remove_prefix(count);
        left_ -= count;
    }
    return true;
}

void Relay::writeProgram() {
    if (!program_ || forProgram_.empty()) {
        return;
    }
    const ssize_t count =
        ::send(program_.get(), forProgram_.data(), forProgram_.size(), MSG_NOSIGNAL);
    if (count >= 0) {
        forProgram_.erase(0, static_cast<std::size_t>(count));
    } else if (!mayTryAgain()) {
        disconnect();
    }
}

void Relay::readProgram() {
    std::array<char, chunkBytes> buffer;
    const std::size_t room = std::min(buffer.size(), requests_.wanted());
    const ssize_t count = ::recv(program_.get(), buffer.data(), room, 0);
    if (count < 0 && mayTryAgain()) {
        return;
    }
    if (count <= 0 || !requests_.feed({buffer.data(), static_cast<std::size_t>(count)})) {
        disconnect();
        return;
    }
    if (const auto message = requests_.next()) {
        forBrowser_ = Wire::frame(*message);
        writeBrowser();
    }
}

bool Relay::writeBrowser() {
    const ssize_t count = ::write(browserOut_, forBrowser_.data(), forBrowser_.size());
    if (count < 0) {
        return mayTryAgain();
    }
    forBrowser_.erase(0, static_cast<std::size_t>(count));
    if (forBrowser_.empty()) {
        forBrowser_ = {};
    }
    return true;
}

bool Relay::readEvents() {
    alignas(inotify_event) std::array<char, 4096> buffer;
    bool isNew = false;
    bool isGone = false;
    for (ssize_t count = 0; (count = ::read(events_.get(), buffer.data(), buffer.size())) > 0;) {
        for (ssize_t at = 0; at < count;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            isGone = isGone || (event->mask & IN_IGNORED) != 0;
            isNew = isNew || (event->len > 0 && event->name == Wire::socketName);
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
    if (isNew) {
        connect();
    }
    // Without the folder, which goes with the user's session, nobody can be found any more.
    return !isGone;
}

} // namespace pacelet::bridge
