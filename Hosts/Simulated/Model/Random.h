#pragma once

#include <cstdint>
#include <string_view>

namespace pacelet::Simulated {

/// A sequence of numbers that depends on its seed alone, on every compiler and library alike.
class Random {
public:
    explicit Random(std::uint64_t seed)
        : state_{seed} {}

    std::uint64_t next() {
        state_ += 0x9e3779b97f4a7c15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebU;
        return mixed ^ (mixed >> 31);
    }

    double uniform(double low, double high) {
        constexpr double steps = 9007199254740992.0; // 2^53
        return low + (high - low) * (static_cast<double>(next() >> 11) / steps);
    }

    std::int64_t integer(std::int64_t low, std::int64_t high) {
        const auto span = static_cast<std::uint64_t>(high - low) + 1;
        return low + static_cast<std::int64_t>(next() % span);
    }

private:
    std::uint64_t state_;
};

/// A number that stays the same for a text in every run (FNV-1a).
constexpr std::uint64_t stableHash(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001b3U;
    }
    return hash;
}

} // namespace pacelet::Simulated
