#pragma once

#include <coroutine>

namespace pacelet {

/// Awaits an object that must stay where it is. GCC 12 copies what is awaited, even an lvalue; this
/// stand-in may be copied.
template<typename Awaiter>
class AwaitReference {
public:
    explicit AwaitReference(Awaiter& awaiter)
        : awaiter_{&awaiter} {}

    bool await_ready() { return awaiter_->await_ready(); }
    void await_suspend(std::coroutine_handle<> waiting) { awaiter_->await_suspend(waiting); }
    decltype(auto) await_resume() { return awaiter_->await_resume(); }

private:
    Awaiter* awaiter_;
};

} // namespace pacelet
