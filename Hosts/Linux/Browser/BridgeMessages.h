#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What our extension in a browser is asked, and what it answers.
namespace pacelet::Linux::BridgeMessages {

struct Request {
    std::string_view ask; ///< one of the operations that the extension knows
    std::optional<std::int64_t> window;
    std::optional<std::int64_t> tab;
    std::optional<std::string_view> url;
    std::optional<std::string_view> token;
};

struct Tab {
    std::int64_t id = 0;
    bool isActive = false;
    std::string title; ///< without control characters, which would read as a listing's separators
    std::string url;   ///< the same

    bool operator==(const Tab&) const = default;
};

struct Window {
    std::int64_t id = 0;
    bool isFocused = false;
    std::vector<Tab> tabs;

    bool operator==(const Window&) const = default;
};

struct Reply {
    std::int64_t id = 0;              ///< of the request
    std::optional<std::string> error; ///< why it was not done
    std::vector<Window> windows;
    std::optional<std::int64_t> made; ///< id of the tab or window that was opened

    bool operator==(const Reply&) const = default;
};

std::string write(std::int64_t id, const Request& request);

/// Reads a reply; nothing when it is none. A window or tab without a proper id loses only itself.
std::optional<Reply> parse(std::string_view json);

} // namespace pacelet::Linux::BridgeMessages
