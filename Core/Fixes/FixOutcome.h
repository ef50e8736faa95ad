#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace pacelet {

/// How an action on the machine ended.
class FixOutcome {
public:
    enum class Kind {
        failed,       ///< it could not be carried out; `reason` tells why
        done,         ///< it finished
        alreadyGone,  ///< nothing was running to act on
        stillRunning, ///< the app outlived the wait
        cancelled,    ///< the user cancelled a prompt of the system
        refused,      ///< the safety gate said no
    };

    /// `reason` is a number or a text for the user.
    static FixOutcome failed(std::string reason) { return {Kind::failed, std::move(reason)}; }
    static FixOutcome done() { return {Kind::done, {}}; }
    static FixOutcome alreadyGone() { return {Kind::alreadyGone, {}}; }
    static FixOutcome stillRunning() { return {Kind::stillRunning, {}}; }
    static FixOutcome cancelled() { return {Kind::cancelled, {}}; }
    static FixOutcome refused() { return {Kind::refused, {}}; }

    /// What a script's error number means: a cancelled prompt, or a failure with that number.
    static FixOutcome fromAppleScriptError(std::int64_t number);

    Kind kind() const { return kind_; }

    /// Empty for every kind but `failed`.
    const std::string& reason() const { return reason_; }

    /// For the log: the name of the kind, and the reason of a failure in parentheses and quotes.
    std::string description() const;

    bool operator==(const FixOutcome&) const = default;

private:
    FixOutcome(Kind kind, std::string reason)
        : kind_{kind},
          reason_{std::move(reason)} {}

    Kind kind_;
    std::string reason_;
};

} // namespace pacelet
