#pragma once

#include "Core/Platform/Clock.h"
#include "Hosts/Recorded/Disguise.h"
#include "Hosts/Recorded/Wire.h"

#include <chrono>
#include <fmt/format.h>
#include <functional>
#include <mutex>
#include <optional>
#include <unordered_map>

namespace pacelet::Recorded {

/// What stands between a call and its answer. A look happens at one moment: within it, a call is
/// answered once, and the clock stands still. So what was computed from a recording is computed
/// again from its replay. Safe from any thread.
class Tape : public Clock {
public:
    /// To be recorded on.
    explicit Tape(Disguise& disguise)
        : disguise_{&disguise} {}
    /// To be replayed. It shows the first look.
    explicit Tape(Capture capture)
        : capture_{std::move(capture)} {}

    /// While recording: another look begins.
    void addLook(Moment moment);

    /// While replaying: shows this look from now on.
    void show(std::size_t look);

    /// While replaying: looks follow each other as they did, from the one on show.
    void followRealTime();

    /// All that was recorded.
    Capture capture();

    TimePoint now() override;
    /// Goes on between the looks when it follows real time.
    MonotonicTime monotonicNow() override;

    /// While recording: the text without whom it tells of, as calls are kept under it.
    std::string hidden(const std::string& text) { return disguise_ ? disguise_->hide(text) : text; }

    /// What the call gives: while recording what `live` does, its texts disguised; while replaying
    /// what it gave last, up to the look on show, or `absent`.
    template<typename Value>
    Value answer(const std::string& call, Value absent, const std::function<Value()>& live) {
        if (!disguise_) {
            const auto stored = last(call);
            return stored ? Wire::decode<Value>(*stored).value_or(std::move(absent)) : absent;
        }
        if (const auto stored = ofThisLook(call)) {
            return Wire::decode<Value>(*stored).value_or(std::move(absent));
        }
        Value value = live();
        Wire::changeTexts(value, [this](const std::string& text) { return disguise_->hide(text); });
        // Another thread may have been faster; what counts is what was kept.
        return Wire::decode<Value>(keep(call, Wire::encode(std::move(value))))
            .value_or(std::move(absent));
    }

private:
    std::optional<std::string> last(const std::string& call);
    std::optional<std::string> ofThisLook(const std::string& call);
    std::string keep(const std::string& call, std::string value);
    std::size_t lookOnShow() const;
    Seconds elapsed() const;

    std::mutex mutex_;
    Disguise* disguise_ = nullptr;
    Capture capture_;
    std::unordered_map<std::string, std::uint32_t> askedIn_; ///< the last look, by call
    std::size_t look_ = 0;
    std::optional<std::chrono::steady_clock::time_point> followsSince_;
};

} // namespace pacelet::Recorded
