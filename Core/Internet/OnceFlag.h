#pragma once

#include <mutex>

namespace pacelet {

/// Makes sure that one completion happens once, whichever thread comes first.
class OnceFlag {
public:
    /// True for the first caller alone.
    bool claim() {
        const std::lock_guard guard{lock_};
        if (used_) {
            return false;
        }
        used_ = true;
        return true;
    }

private:
    std::mutex lock_;
    bool used_ = false;
};

} // namespace pacelet
