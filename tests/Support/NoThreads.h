#pragma once

#include <cstddef>
#include <pthread.h>

namespace pacelet::testing {

/// While it lives, the system gives this program no further thread: there is no room for the stack
/// that each would have.
class NoThreads {
public:
    NoThreads() {
        ::pthread_getattr_default_np(&usual_);
        pthread_attr_t greedy;
        ::pthread_attr_init(&greedy);
        ::pthread_attr_setstacksize(&greedy, std::size_t{1} << 46);
        ::pthread_setattr_default_np(&greedy);
        ::pthread_attr_destroy(&greedy);
    }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;
    ~NoThreads() {
        ::pthread_setattr_default_np(&usual_);
        ::pthread_attr_destroy(&usual_);
    }

private:
    pthread_attr_t usual_;
};

} // namespace pacelet::testing
