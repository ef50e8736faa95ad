#pragma once

#include "Hosts/Simulated/Model/World.h"

#include <cstdint>
#include <ctime>
#include <string>

namespace pacelet {

/// A Mac with so many processes, a fifth of them in applications, all of them busy now and then.
/// 40 processes make 33 groups.
inline Simulated::World crowdedMac(std::int64_t count) {
    Simulated::World world;
    for (std::int64_t number = 0; number < count; ++number) {
        Simulated::Process process;
        process.user = number % 3 == 0 ? Simulated::root : Simulated::ann;
        const std::string digits = std::to_string(number);
        process.path = number % 5 == 0
                           ? "/Applications/Application " + std::to_string(number / 40) +
                                 ".app/Contents/Frameworks/Helper " + digits
                           : "/usr/libexec/daemon-of-a-usual-length-" + digits;
        process.load = {.percent = static_cast<double>(number % 17),
                        .swing = 0.5,
                        .phase = static_cast<double>(number)};
        process.footprint = (number % 300) << 20;
        world.processes.spawn(process);
    }
    return world;
}

/// CPU time of the calling thread.
inline double threadSeconds() {
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

} // namespace pacelet
