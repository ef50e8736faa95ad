// delay-line DEVICE MILLISECONDS: every packet that is routed into a TUN device comes out of it
// again, so much later. Not every kernel has a queue that does this by itself.

#include "Core/Support/Descriptor.h"
#include "Core/Support/Text.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <optional>
#include <poll.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <vector>

namespace {

using namespace pacelet;
using SteadyClock = std::chrono::steady_clock;

struct Packet {
    SteadyClock::time_point due;
    std::vector<char> bytes;
};

std::optional<Descriptor> openDevice(const char* name) {
    Descriptor device{::open("/dev/net/tun", O_RDWR | O_NONBLOCK | O_CLOEXEC)};
    ifreq request{};
    request.ifr_flags = IFF_TUN | IFF_NO_PI;
    std::strncpy(request.ifr_name, name, IFNAMSIZ - 1);
    if (!device || ::ioctl(device.get(), TUNSETIFF, &request) != 0) {
        return std::nullopt;
    }
    return device;
}

void takeIn(int device, SteadyClock::duration delay, std::deque<Packet>& waiting) {
    std::array<char, 65536> room; // NOLINT(*-member-init): filled by the kernel
    for (;;) {
        const ssize_t size = ::read(device, room.data(), room.size());
        if (size <= 0) {
            return;
        }
        waiting.push_back({SteadyClock::now() + delay, {room.begin(), room.begin() + size}});
    }
}

void letOut(int device, std::deque<Packet>& waiting) {
    const auto now = SteadyClock::now();
    while (!waiting.empty() && waiting.front().due <= now) {
        const std::vector<char>& bytes = waiting.front().bytes;
        if (::write(device, bytes.data(), bytes.size()) < 0) {
            std::perror("delay-line");
        }
        waiting.pop_front();
    }
}

void waitForNext(int device, const std::deque<Packet>& waiting) {
    pollfd source{device, POLLIN, 0};
    timespec timeout{};
    if (!waiting.empty()) {
        const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(waiting.front().due -
                                                                               SteadyClock::now());
        timeout.tv_nsec = std::max<long>(left.count(), 0); // a delay is less than a second
    }
    ::ppoll(&source, 1, waiting.empty() ? nullptr : &timeout, nullptr);
}

} // namespace

int main(int argc, char** argv) {
    constexpr int longestDelay = 500;
    const auto milliseconds = argc == 3 ? parseInteger<int>(argv[2]) : std::nullopt;
    if (!milliseconds || *milliseconds < 0 || *milliseconds > longestDelay) {
        std::fputs("Usage: delay-line DEVICE MILLISECONDS\n", stderr);
        return 2;
    }
    const auto device = openDevice(argv[1]);
    if (!device) {
        std::perror("delay-line");
        return 1;
    }
    // Punctual even on a crowded machine, where that is allowed.
    const sched_param first{1};
    ::sched_setscheduler(0, SCHED_FIFO, &first);
    std::deque<Packet> waiting;
    for (;;) {
        waitForNext(device->get(), waiting);
        takeIn(device->get(), std::chrono::milliseconds{*milliseconds}, waiting);
        letOut(device->get(), waiting);
    }
}
