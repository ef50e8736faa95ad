#include "Hosts/Linux/X11/Connection.h"

namespace pacelet::Linux::X11 {

namespace {

/// In units of four bytes; no property that we read is near it.
constexpr std::uint32_t mostPropertyUnits = 1 << 16;

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0 && number > 0; --number) {
        xcb_screen_next(&screens);
    }
    return screens.rem > 0 ? screens.data : nullptr;
}

} // namespace

Connection::Connection(const std::string& display) {
    if (display.empty()) {
        return;
    }
    int screen = 0;
    connection_.reset(xcb_connect(display.c_str(), &screen));
    if (xcb_connection_has_error(connection_.get()) == 0) {
        screen_ = screenOf(connection_.get(), screen);
    }
}

xcb_atom_t Connection::atom(std::string_view name) const {
    const auto cookie =
        xcb_intern_atom(get(), 1, static_cast<std::uint16_t>(name.size()), name.data());
    const auto answer = replyTo(get(), cookie, xcb_intern_atom_reply);
    return answer != nullptr ? answer->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void Connection::synchronize() const {
    replyTo(get(), xcb_get_input_focus(get()), xcb_get_input_focus_reply);
}

PropertyQuestion::PropertyQuestion(const Connection& connection, xcb_window_t window,
                                   xcb_atom_t property, xcb_atom_t type)
    : connection_{connection.get()},
      cookie_{xcb_get_property(connection_, 0, window, property, type, 0, mostPropertyUnits)} {}

Reply<xcb_get_property_reply_t> PropertyQuestion::answer(std::uint8_t format) const {
    auto reply = replyTo(connection_, cookie_, xcb_get_property_reply);
    return reply != nullptr && reply->format == format ? std::move(reply) : nullptr;
}

std::vector<std::uint32_t> PropertyQuestion::numbers() const {
    const auto reply = answer(32);
    if (reply == nullptr) {
        return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::string PropertyQuestion::text() const {
    const auto reply = answer(8);
    if (reply == nullptr) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

} // namespace pacelet::Linux::X11
