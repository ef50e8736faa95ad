#include "Hosts/Recorded/Tape.h"

#include <algorithm>

namespace pacelet::Recorded {

void Tape::addLook(Moment moment) {
    const std::lock_guard lock{mutex_};
    capture_.looks.push_back(moment);
    look_ = capture_.looks.size() - 1;
}

void Tape::show(std::size_t look) {
    const std::lock_guard lock{mutex_};
    look_ = std::min(look, capture_.looks.size() - 1);
}

void Tape::followRealTime() {
    const std::lock_guard lock{mutex_};
    followsSince_ = std::chrono::steady_clock::now();
}

Capture Tape::capture() {
    const std::lock_guard lock{mutex_};
    return capture_;
}

Seconds Tape::elapsed() const {
    return followsSince_ ? Seconds{std::chrono::steady_clock::now() - *followsSince_} : Seconds{};
}

std::size_t Tape::lookOnShow() const {
    if (!followsSince_) {
        return look_;
    }
    const double now = capture_.looks[look_].monotonic + elapsed().count();
    const auto next = std::ranges::upper_bound(capture_.looks, now, {}, &Moment::monotonic);
    const auto passed = static_cast<std::size_t>(next - capture_.looks.begin());
    return std::max(look_, passed - 1);
}

TimePoint Tape::now() {
    const std::lock_guard lock{mutex_};
    return fromUnixTime(capture_.looks.at(lookOnShow()).wall);
}

MonotonicTime Tape::monotonicNow() {
    const std::lock_guard lock{mutex_};
    return MonotonicTime{Seconds{capture_.looks.at(look_).monotonic} + elapsed()};
}

std::optional<std::string> Tape::last(const std::string& call) {
    const std::lock_guard lock{mutex_};
    const auto known = capture_.answers.find(call);
    if (known == capture_.answers.end()) {
        return std::nullopt;
    }
    const auto later = std::ranges::upper_bound(known->second, lookOnShow(), {}, &Answer::look);
    return later == known->second.begin() ? std::nullopt : std::optional{std::prev(later)->value};
}

std::optional<std::string> Tape::ofThisLook(const std::string& call) {
    const std::lock_guard lock{mutex_};
    const auto asked = askedIn_.find(call);
    return asked != askedIn_.end() && asked->second == look_
               ? std::optional{capture_.answers.at(call).back().value}
               : std::nullopt;
}

std::string Tape::keep(const std::string& call, std::string value) {
    const std::lock_guard lock{mutex_};
    const auto look = static_cast<std::uint32_t>(look_);
    std::vector<Answer>& answers = capture_.answers[call];
    const auto [asked, isNew] = askedIn_.try_emplace(call, look);
    if (!isNew && asked->second == look) {
        return answers.back().value;
    }
    asked->second = look;
    // What stays as it is needs no more room.
    if (answers.empty() || answers.back().value != value) {
        answers.push_back({look, std::move(value)});
    }
    return answers.back().value;
}

} // namespace pacelet::Recorded
