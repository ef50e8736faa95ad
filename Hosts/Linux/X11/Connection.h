#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>

namespace pacelet::Linux::X11 {

struct ReplyReleaser {
    void operator()(void* reply) const { std::free(reply); }
};

/// An answer of the display server; null when it answered with an error or not at all.
template<typename Record>
using Reply = std::unique_ptr<Record, ReplyReleaser>;

/// The answer to a request, where `reply` is the library's function for it. Errors are not told
/// apart: what asked about was gone, or the server is.
template<typename Cookie, typename Record>
Reply<Record> replyTo(xcb_connection_t* connection, Cookie cookie,
                      Record* (*reply)(xcb_connection_t*, Cookie, xcb_generic_error_t**)) {
    xcb_generic_error_t* error = nullptr;
    Reply<Record> answer{reply(connection, cookie, &error)};
    std::free(error);
    return answer;
}

/// A connection to a display server. For one thread.
class Connection {
public:
    /// `display` as in DISPLAY; without it, or without an answer, the connection is not open.
    explicit Connection(const std::string& display);

    explicit operator bool() const { return screen_ != nullptr; }
    xcb_connection_t* get() const { return connection_.get(); }
    xcb_window_t root() const { return screen_->root; }

    /// The atom of this name; `XCB_ATOM_NONE` when nobody has ever used it.
    xcb_atom_t atom(std::string_view name) const;

    /// Waits until the server has taken all that was sent.
    void synchronize() const;

private:
    struct Closer {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    std::unique_ptr<xcb_connection_t, Closer> connection_;
    const xcb_screen_t* screen_ = nullptr; // belongs to the connection
};

/// Asks for a property of a window, and reads it when its answer is needed: many questions may be
/// under way at a time.
class PropertyQuestion {
public:
    PropertyQuestion(const Connection& connection, xcb_window_t window, xcb_atom_t property,
                     xcb_atom_t type);

    /// The property's numbers of 32 bits each; empty when it is missing or of another shape.
    std::vector<std::uint32_t> numbers() const;

    /// The same for text.
    std::string text() const;

private:
    Reply<xcb_get_property_reply_t> answer(std::uint8_t format) const;

    xcb_connection_t* connection_;
    xcb_get_property_cookie_t cookie_;
};

} // namespace pacelet::Linux::X11
