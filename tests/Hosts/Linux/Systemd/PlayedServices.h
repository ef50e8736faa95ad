#pragma once

#include "tests/Hosts/Linux/Systemd/ServedBus.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace pacelet::testing {

/// What a test's own services answer, by "interface.method": "" for nothing, "yes" and other words
/// as they stand, "true" and "false", "as:…" for a list of one, and an error by its name.
using PlayedAnswers = std::map<std::string, std::string>;

/// Services under names on the bus, on every path. What they do not know is an unknown method.
class PlayedServices {
public:
    PlayedServices(const std::vector<std::string>& names, PlayedAnswers answers)
        : answers_{std::move(answers)},
          served_{connect(names)} {}

    /// The methods that were called, and a first text or number in brackets.
    std::string calls() {
        const std::lock_guard lock{mutex_};
        return calls_;
    }

private:
    Linux::Bus connect(const std::vector<std::string>& names) {
        Linux::Bus bus = Linux::openBus(Linux::BusKind::user, std::chrono::seconds{5});
        sd_bus_add_fallback(bus.get(), nullptr, "/", onCall, this);
        for (const std::string& name : names) {
            sd_bus_request_name(bus.get(), name.c_str(), 0);
        }
        return bus;
    }

    static int onCall(sd_bus_message* call, void* services, sd_bus_error*) {
        return static_cast<PlayedServices*>(services)->answer(call);
    }

    int answer(sd_bus_message* call) {
        const std::string method =
            std::string{sd_bus_message_get_interface(call)} + "." + sd_bus_message_get_member(call);
        {
            const std::lock_guard lock{mutex_};
            const char* text = nullptr;
            calls_ += method;
            if (sd_bus_message_has_signature(call, "s") ||
                sd_bus_message_has_signature(call, "sava{sv}")) {
                sd_bus_message_read_basic(call, 's', &text);
                calls_ += "(" + std::string{text} + ")";
            }
            calls_ += ' ';
        }
        const auto known = answers_.find(method);
        if (known == answers_.end()) {
            return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_METHOD, "No such method");
        }
        const std::string& word = known->second;
        if (word.empty()) {
            return sd_bus_reply_method_return(call, "");
        }
        if (word == "true" || word == "false") {
            return sd_bus_reply_method_return(call, "b", word == "true" ? 1 : 0);
        }
        if (word.starts_with("as:")) {
            return sd_bus_reply_method_return(call, "as", 1, word.c_str() + 3);
        }
        return word.find('.') == std::string::npos
                   ? sd_bus_reply_method_return(call, "s", word.c_str())
                   : sd_bus_reply_method_errorf(call, word.c_str(), "No");
    }

    std::mutex mutex_;
    std::string calls_;
    const PlayedAnswers answers_;
    ServedBus served_;
};

} // namespace pacelet::testing
