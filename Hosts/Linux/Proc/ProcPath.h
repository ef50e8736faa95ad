#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace pacelet::Linux {

/// The path "<pid>" or "<pid>/<file>" below `/proc`, made without an allocation.
class ProcPath {
public:
    explicit ProcPath(std::int32_t pid, std::string_view file = {}) {
        char* end = std::to_chars(text_.data(), text_.data() + longestPID, pid).ptr;
        if (!file.empty()) {
            *end++ = '/';
            end += file.copy(end, longestFile);
        }
        *end = '\0';
    }

    const char* text() const { return text_.data(); }

private:
    static constexpr std::size_t longestPID = 11;
    static constexpr std::size_t longestFile = 16;

    std::array<char, longestPID + longestFile + 2> text_;
};

} // namespace pacelet::Linux
