#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace pacelet {

namespace detail {

struct CancellationState {
    bool cancelled = false;
    std::uint64_t nextHandler = 0;
    std::map<std::uint64_t, std::function<void()>> handlers; ///< in the order of registration
};

} // namespace detail

/// What a task is handed to learn that it is no longer wanted. Copies speak of one cancellation; a
/// default-made token is never cancelled. Belongs to the UI thread.
class CancellationToken {
public:
    CancellationToken() = default;

    bool isCancelled() const { return state_ && state_->cancelled; }

private:
    friend class CancellationHandler;
    friend class CancellationSource;

    explicit CancellationToken(std::shared_ptr<detail::CancellationState> state)
        : state_{std::move(state)} {}

    std::shared_ptr<detail::CancellationState> state_;
};

/// Runs `handle` when the token is cancelled, for as long as this object lives.
class CancellationHandler {
public:
    CancellationHandler(const CancellationToken& token, std::function<void()> handle);
    ~CancellationHandler();
    CancellationHandler(const CancellationHandler&) = delete;
    CancellationHandler& operator=(const CancellationHandler&) = delete;

private:
    std::shared_ptr<detail::CancellationState> state_;
    std::uint64_t id_ = 0;
};

/// Owns a cancellation. Dropping it cancels, so that a task never outlives its owner's interest.
class CancellationSource {
public:
    CancellationSource() : state_{std::make_shared<detail::CancellationState>()} {}
    ~CancellationSource() { cancel(); }
    CancellationSource(const CancellationSource&) = delete;
    CancellationSource& operator=(const CancellationSource&) = delete;

    CancellationToken token() const { return CancellationToken{state_}; }

    /// Ends the waits that hold a token. They resume in a later turn of the UI thread, never inside
    /// this call.
    void cancel();

private:
    std::shared_ptr<detail::CancellationState> state_;
};

} // namespace pacelet
