#pragma once

#include <stop_token>

namespace pacelet {

/// A stop source that asks for the stop when it goes, so that a task never outlives its owner's
/// interest. A wait that holds a token ends in a later turn of the UI thread, never inside the
/// asking.
class StopOwner {
public:
    StopOwner() = default;
    ~StopOwner() { source_.request_stop(); }
    StopOwner(const StopOwner&) = delete;
    StopOwner& operator=(const StopOwner&) = delete;

    std::stop_token token() const { return source_.get_token(); }

private:
    std::stop_source source_;
};

} // namespace pacelet
