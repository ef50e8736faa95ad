#pragma once

#include <chrono>
#include <thread>

namespace pacelet::testing {

/// Looks until `isTrue` holds, for `limit` at most; whether it came to hold.
template<typename Predicate>
bool eventually(Predicate&& isTrue, std::chrono::milliseconds limit = std::chrono::seconds{10}) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!isTrue()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds{10});
    }
    return true;
}

} // namespace pacelet::testing
